#pragma once

#include <span>

#include "trovenu/backtest/setting.h"
#include "trovenu/support/field_table.h"

namespace trovenu {

/// The stored settings in the order of both files, with the keys of the INI file.
std::span<const Field<SSimulationSetting>> IniSettingFields();

/// Those that the archive holds, with its short keys.
std::span<const Field<SSimulationSetting>> ArchiveSettingFields();

}  // namespace trovenu
