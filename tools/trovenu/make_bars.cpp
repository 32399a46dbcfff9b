#include <cstdint>
#include <memory>
#include <string>

#include "tools/trovenu/at_least.h"
#include "tools/trovenu/command.h"
#include "tools/trovenu/minute_maker.h"
#include "tools/trovenu/output_file.h"

namespace trovenu::tool {

namespace {

constexpr int kSampleSessions = 5;
constexpr int kMostBars = 100'000'000;
constexpr std::size_t kPiece = 1 << 16;

struct Options {
  bool minutes = false;
  int count = 0;
  std::uint64_t seed = 1;
  std::string out;
};

int Run(const Options &options) {
  const int count = options.minutes ? kSampleSessions * MinuteMaker::kBarsPerSession : options.count;
  OutputFile out(options.out);
  MinuteMaker maker(options.seed);
  std::string text = MinuteMaker::Header();
  for (int i = 0; i < count; ++i) {
    MinuteMaker::AppendLine(text, maker.Next());
    if (text.size() < kPiece) continue;
    out.Write(text);
    text.clear();
  }
  out.Write(text);
  out.Commit();
  return kDone;
}

}  // namespace

Command AddBars(CLI::App &tool) {
  CLI::App *command = tool.add_subcommand("bars", "Make up one-minute bars, the same ones for the same seed");
  const auto options = std::make_shared<Options>();
  CLI::Option_group *amount = command->add_option_group("Amount");
  amount->add_flag("--minutes", options->minutes,
                   "Five sessions from 9:00 to 15:30: the bars of data/minutes.csv");
  amount->add_option("--count", options->count, "That many bars, session after session")
      ->type_name("N")
      ->check(CLI::Range(1, kMostBars));
  amount->require_option(1);
  command->add_option("--seed", options->seed, "Another series for each number")
      ->type_name("S")
      ->check(AtLeast(0))
      ->capture_default_str();
  AddOutOption(*command, options->out);
  return {command, [options] { return Run(*options); }};
}

}  // namespace trovenu::tool
