#include "trovenu/backtest/setting.h"

#include "trovenu/backtest/setting_fields.h"
#include "trovenu/backtest/simulation.h"
#include "trovenu/support/archive.h"
#include "trovenu/support/ini_file.h"
#include "trovenu/support/ini_section.h"

namespace trovenu {
namespace {

constexpr const char *kSection = "SimulationConfigure";
constexpr const char *kCategory = "Simulation";

}  // namespace

// The table gives every other member its value.
// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
SSimulationSetting::SSimulationSetting() { SetDefaultValue(); }

void SSimulationSetting::SetDefaultValue() {
  SymbolName = "";
  SetFieldsToDefault(IniSettingFields(), *this);
}

void SSimulation::SetDefaultValue() { Setting.SetDefaultValue(); }

void SSimulation::ReadSetting(const char *fileName) {
  CIniFile file(fileName);
  IniSection section(file, kSection);
  LoadFields(section, IniSettingFields(), Setting, Setting);
  Setting.SignalAction = 0;  // Required: whatever the file holds.
}

void SSimulation::SaveSetting(const char *fileName) const {
  CIniFile file(fileName);
  IniSection section(file, kSection);
  StoreFields(section, IniSettingFields(), Setting, Setting);
}

void SSimulation::Load(CKqArchive &archive) {
  archive.SetCategory(kCategory);
  LoadFields(archive, ArchiveSettingFields(), Setting, SSimulationSetting());
}

void SSimulation::Store(CKqArchive &archive) const {
  archive.SetCategory(kCategory);
  StoreFields(archive, ArchiveSettingFields(), Setting, SSimulationSetting());
}

}  // namespace trovenu
