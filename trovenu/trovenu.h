#pragma once

/// Every exported class and function of Trovenu.
#include "trovenu/platform/export.h"
#include "trovenu/platform/version.h"
