#include <cstdio>
#include <exception>
#include <new>
#include <string>
#include <vector>

#include "tools/trovenu/command.h"
#include "tools/trovenu/failure.h"
#include "tools/trovenu/terminal_text.h"
#include "trovenu/platform/terminal.h"
#include "trovenu/platform/version.h"

namespace trovenu::tool {

namespace {

using AddCommand = Command (*)(CLI::App &tool);

// In the order of the help text.
constexpr AddCommand kCommands[] = {AddEval,   AddCheck,   AddWords,    AddIndicator, AddReplay,
                                    AddScreen, AddCompile, AddBacktest, AddOptimise,  AddReport,
                                    AddLevels, AddChart,   AddTable,    AddBars};

int Report(const std::string &line, int exitCode) {
  std::fprintf(stderr, "trovenu: %s\n", line.c_str());
  return exitCode;
}

// The command that the arguments name, for "trovenu NAME --help".
std::string HelpOf(const CLI::App &tool) {
  const std::vector<CLI::App *> named = tool.get_subcommands();
  return named.empty() ? "trovenu --help" : "trovenu " + named.front()->get_name() + " --help";
}

int Run(int argc, char **argv) {
  CLI::App tool("Trovenu on the command line: evaluates chart formulas on bars.", "trovenu");
  tool.set_version_flag("--version", Version());
  tool.require_subcommand(0, 1);
  tool.footer("Texts are UTF-8. Exit codes: 0 done, 1 failure, 2 bad usage.");
  std::vector<Command> commands;
  for (const AddCommand add : kCommands) commands.push_back(add(tool));
  try {
    tool.parse(argc, argv);
    for (const Command &command : commands) {
      if (command.options->parsed()) return command.run();
    }
    return Report("expected a command (see trovenu --help)", kBadUsage);
  } catch (const CLI::Success &help) {
    return tool.exit(help);
  } catch (const CLI::ParseError &error) {
    return Report(OneLine(error.what()) + " (see " + HelpOf(tool) + ")", kBadUsage);
  } catch (const Failure &failure) {
    return Report(failure.what(), kFailed);
  } catch (const std::bad_alloc &) {
    return Report("out of memory", kFailed);
  }
}

}  // namespace

}  // namespace trovenu::tool

int main(int argc, char **argv) {
  trovenu::PrepareStandardStreams();
  try {
    return trovenu::tool::Run(argc, argv);
  } catch (const std::exception &fault) {
    std::fprintf(stderr, "trovenu: %s\n", fault.what());
    return trovenu::tool::kFailed;
  }
}
