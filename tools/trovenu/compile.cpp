#include <algorithm>
#include <cstdio>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tools/trovenu/command.h"
#include "tools/trovenu/formula.h"
#include "tools/trovenu/formula_folder.h"
#include "tools/trovenu/formula_options.h"
#include "trovenu/formula/calc.h"
#include "trovenu/formula/postfix/carried.h"
#include "trovenu/platform/code_page.h"

namespace trovenu::tool {

namespace {

struct Options {
  std::string formula;
  std::string folder;
  FormatOption format;
  std::string out;
};

std::string InUtf8(const SString &text) { return Utf8FromCodePage(text.c_str(), nullptr); }

// The programs that run: that of the formula, and those of the functions that it calls.
class Listing {
 public:
  explicit Listing(const SCalc &calc) : calc_(calc) { Add("formula", *calc.programStack); }

  Table Take() {
    return {{{"program", std::move(programs_)},
             {"step", std::move(steps_)},
             {"code", std::move(codes_)},
             {"item", std::move(items_)},
             {"arguments", std::move(arguments_)},
             {"value", std::move(values_)}}};
  }

 private:
  static constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

  void Add(const std::string &name, const SStack &program) {
    std::vector<int> called;
    for (int i = program.Top; i >= 0; --i) {
      const SStackItem &item = program.Items[static_cast<std::size_t>(i)];
      const bool isFunction = calc_.GetOpType(item.OpCode) == kFunctionType;
      programs_.values.push_back(name);
      steps_.values.push_back(program.Top - i + 1);
      codes_.values.push_back(item.OpCode);
      items_.values.push_back(InUtf8(item.Name));
      arguments_.values.push_back(isFunction ? item.ParamCount : kNone);
      values_.values.push_back(item.OpCode == kNumberCode ? item.Value[0] : kNone);
      const int index = item.OpCode - kFirstUserCode;
      if (index >= 0 && index < kCompiledFunctions) called.push_back(index);
    }
    for (const int index : called) {
      if (calc_.functionStacks[index] == nullptr || std::exchange(listed_[index], true)) continue;
      Add(InUtf8((*calc_.functionList)[index].IndexName), *calc_.functionStacks[index]);
    }
  }

  const SCalc &calc_;
  bool listed_[kCompiledFunctions] = {};
  TableColumn::Texts programs_;
  TableColumn::Numbers steps_;
  TableColumn::Numbers codes_;
  TableColumn::Texts items_;
  TableColumn::Numbers arguments_;
  TableColumn::Numbers values_;
};

int Run(const Options &options) {
  SFunctionList functions = FormulaFolder(options.folder).Functions();
  const std::string formula = FormulaInCodePage(options.formula);
  SCalc calc;
  calc.SetFunction(&functions);
  calc.SetExpression(formula.c_str());
  calc.InfixToPostFix();
  WriteResult(Listing(calc).Take(), options.format, options.out);
  const NotCarried fault = FindNotCarried(formula.c_str(), &functions);
  if (fault.reason != nullptr) {
    const std::string word = fault.word.IsEmpty() ? "" : InUtf8(fault.word) + " ";
    std::fprintf(stderr, "not carried: %s%s\n", word.c_str(), fault.reason);
  }
  return kDone;
}

}  // namespace

Command AddCompile(CLI::App &tool) {
  CLI::App *command = tool.add_subcommand("compile", "Print the program that a formula compiles to");
  const auto options = std::make_shared<Options>();
  command
      ->add_option("--formula,formula", options->formula,
                   "Formula to compile; the option's name may be left out")
      ->type_name("TEXT")
      ->required();
  AddFolderOption(*command, options->folder);
  options->format.Add(*command, {Format::Table, Format::Csv, Format::Json});
  AddOutOption(*command, options->out);
  command->footer(
      "One row for each item in the order in which they run, then the programs of the user functions\n"
      "that are called. Standard error tells if the program could give other values than the formula.");
  return {command, [options] { return Run(*options); }};
}

}  // namespace trovenu::tool
