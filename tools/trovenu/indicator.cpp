#include <algorithm>
#include <utility>
#include <vector>

#include "tools/trovenu/indicator_commands.h"

namespace trovenu::tool {

Command AddIndicator(CLI::App &tool) {
  CLI::App *group = tool.add_subcommand("indicator", "Work with the formula tables of a folder");
  group->require_subcommand(1);
  std::vector<Command> commands = {AddIndicatorRun(*group),    AddIndicatorList(*group),
                                   AddIndicatorShow(*group),   AddIndicatorAdd(*group),
                                   AddIndicatorRemove(*group), AddIndicatorInstall(*group)};
  return {
      group, [commands = std::move(commands)] {
        return std::ranges::find_if(commands, [](const Command &c) { return c.options->parsed(); })->run();
      }};
}

}  // namespace trovenu::tool
