#pragma once

/// Every exported class and function of Trovenu.
#include "trovenu/formula/calc.h"
#include "trovenu/formula/function_table.h"
#include "trovenu/formula/words.h"
#include "trovenu/platform/export.h"
#include "trovenu/platform/string.h"
#include "trovenu/platform/version.h"
#include "trovenu/support/date_number.h"
#include "trovenu/support/korean.h"
#include "trovenu/support/number_text.h"
#include "trovenu/support/price_steps.h"
#include "trovenu/support/series.h"
#include "trovenu/support/text.h"
#include "trovenu/support/text_edit.h"
