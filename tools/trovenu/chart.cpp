#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "tools/trovenu/bars.h"
#include "tools/trovenu/chart_type.h"
#include "tools/trovenu/command.h"
#include "tools/trovenu/output_file.h"
#include "tools/trovenu/picture.h"
#include "tools/trovenu/terminal_text.h"
#include "trovenu/support/number_text.h"

namespace trovenu::tool {

namespace {

struct Options {
  std::string bars;
  std::string type;
  ChartSettings settings;
  std::string tick = "0";
  FormatOption format;
  std::string out;
  std::string svg;
  /// Whether the table was asked for.
  bool table = false;
};

double ReadNumber(const std::string &text) { return AnsiStringToFloat(text.c_str(), std::nan("")); }

const ChartType &TypeOf(const std::string &name) {
  const std::span<const ChartType> types = ChartTypes();
  return *std::find_if(types.begin(), types.end(), [&](const ChartType &type) { return name == type.name; });
}

// What is wrong with the value of a parameter; empty if nothing is.
std::string FaultOf(const ChartParameter &parameter, const std::string &text) {
  const double value = ReadNumber(text);
  const bool whole = parameter.kind == ChartParameter::Kind::Whole;
  if (value >= parameter.least && (!whole || value == std::floor(value))) return {};
  return std::string(parameter.name) + ": expected a " + (whole ? "whole " : "") + "number of " +
         std::to_string(static_cast<int>(parameter.least)) + " or more, found " + Quoted(text);
}

std::string NamesOf(const ChartType &type) {
  std::string names;
  for (std::size_t i = 0; i < type.GivenParameters(); ++i) {
    names += (i > 0 ? ", " : " (") + std::string(type.parameters[i].name);
  }
  return names.empty() ? names : names + ')';
}

// Throws what stands for bad usage if the options don't go together.
void CheckUsage(const Options &options) {
  const ChartType &type = TypeOf(options.type);
  const std::vector<std::string> &given = options.settings.parameters;
  if (given.size() > type.GivenParameters()) {
    const std::string most = std::to_string(type.GivenParameters());
    throw CLI::ValidationError("--param", "expected at most " + most + " for " + type.name + NamesOf(type) +
                                              ", found " + std::to_string(given.size()));
  }
  for (std::size_t i = 0; i < given.size(); ++i) {
    const std::string fault = FaultOf(type.parameters[i], given[i]);
    if (!fault.empty()) throw CLI::ValidationError("--param", fault);
  }
  const double tick = ReadNumber(options.tick);
  if (!(tick >= 0)) {
    throw CLI::ValidationError("--tick", "expected a number of 0 or more, found " + Quoted(options.tick));
  }
  if (!options.svg.empty() && options.svg == options.out) {
    throw CLI::ValidationError("--svg", "names the same file as --out");
  }
}

int Run(Options &options) {
  options.settings.tickSize = ReadNumber(options.tick);
  const Bars bars = ReadBars(options.bars);
  const ChartResult result = CalculateChart(TypeOf(options.type), bars, options.settings);
  if (options.svg.empty()) {
    WriteResult(ChartTable(result), options.format, options.out);
    return kDone;
  }
  OutputFile picture(options.svg);
  picture.Write(DrawChart(result));
  // Before the table, whose reader may close the pipe and so end the tool.
  picture.Commit();
  if (options.table) WriteResult(ChartTable(result), options.format, options.out);
  return kDone;
}

std::string Footer() {
  std::string text = "Types and their parameters, in the order of --param:\n";
  for (const ChartType &type : ChartTypes()) {
    const std::string name = std::string("  ") + type.name;
    text += name + std::string(16 - name.size(), ' ') + type.title + NamesOf(type) + '\n';
  }
  return text +
         "What --param leaves out is the default of the chart's settings, a price step as a\n"
         "share of the first close. With --auto the calculator sets its parameters from the\n"
         "prices, and --auto wins over --param; profile and candlevolume know no automatic\n"
         "values. The result shows the parameters as the chart leaves them.";
}

}  // namespace

Command AddChart(CLI::App &tool) {
  CLI::App *command = tool.add_subcommand("chart", "Charts without a time axis, as a table and as a picture");
  const auto options = std::make_shared<Options>();
  std::vector<std::string> names;
  for (const ChartType &type : ChartTypes()) names.emplace_back(type.name);
  command->add_option("--type", options->type, "Type of the chart, see below")
      ->type_name("NAME")
      ->required()
      ->check(CLI::IsMember(names));
  AddBarsOption(*command, options->bars);
  command->add_flag("--auto", options->settings.automatic, "Parameters that fit the prices");
  command->add_option("--param", options->settings.parameters, "Values of the parameters, in their order")
      ->type_name("N");
  command
      ->add_option("--tick", options->tick,
                   "Smallest price step: a box or brick below it is replaced by a larger\n"
                   "one, 50 or 100 steps high")
      ->type_name("T")
      ->capture_default_str();
  options->format.Add(*command, {Format::Table, Format::Csv, Format::Json});
  AddOutOption(*command, options->out);
  command
      ->add_option("--svg", options->svg,
                   "Picture to write; the table is then written only with --format or\n--out")
      ->type_name("FILE");
  command->footer(Footer());
  command->callback([command, options] {
    options->table = command->count("--format") > 0 || command->count("--out") > 0;
    CheckUsage(*options);
  });
  return {command, [options] { return Run(*options); }};
}

}  // namespace trovenu::tool
