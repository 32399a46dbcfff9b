#include "bench/sample_call.h"

#include <cstdlib>
#include <iostream>
#include <map>
#include <set>

#include "trovenu/formula/function_table.h"
#include "trovenu/formula/words.h"

namespace trovenu::bench {
namespace {

// What stands for an argument of that name.
const std::map<std::string, std::string> kArguments = {
    {"x", "c"},      {"y", "o"},       {"a", "c"},       {"b", "o"},         {"n", "20"},
    {"k", "0"},      {"cond", "c>o"},  {"step", "0.02"}, {"maximum", "0.2"}, {"strength", "2"},
    {"depth", "10"}, {"percent", "1"}, {"unit", "day"},
};

// Calls whose arguments mean something only together.
const std::map<FunctionId, std::string> kWholeCalls = {
    {FunctionId::DeCompress, "DeCompress(CompressC(day),CompressD(day))"},
    {FunctionId::Min, "min(c,o)"},
    {FunctionId::Max, "max(c,o)"},
    {FunctionId::Asin, "asin(c/1000)"},
    {FunctionId::Acos, "acos(c/1000)"},
    {FunctionId::Sinh, "sinh(c/1000)"},
    {FunctionId::Cosh, "cosh(c/1000)"},
    {FunctionId::HighestSince, "HighestSince(1,c>o,c)"},
    {FunctionId::LowestSince, "LowestSince(1,c>o,c)"},
    {FunctionId::SwingHigh, "swinghigh(1,h,2,10)"},
    {FunctionId::SwingLow, "swinglow(1,l,2,10)"},
    {FunctionId::ValueWhen, "valuewhen(1,c>o,c)"},
};

std::string FillIn(const std::string &names) {
  std::string arguments;
  for (std::size_t at = 0; at < names.size();) {
    const std::size_t end = std::min(names.find(',', at), names.size());
    const std::size_t first = names.find_first_not_of(' ', at);
    const auto found = kArguments.find(names.substr(first, end - first));
    if (found == kArguments.end()) {
      std::cerr << "no sample for the arguments \"" << names << "\"\n";
      std::exit(1);
    }
    arguments += (arguments.empty() ? "" : ",") + found->second;
    at = end + 1;
  }
  return arguments;
}

}  // namespace

std::vector<std::string> SampleCalls() {
  std::vector<std::string> calls;
  std::set<FunctionId> done;
  for (const Word &word : Words()) {
    const bool isCall = word.family == WordFamily::Vector || word.family == WordFamily::Math ||
                        word.family == WordFamily::Time;
    const Function *function = FindFunction(word.function);
    if (!isCall || function == nullptr || word.function == FunctionId::Caret ||
        !done.insert(word.function).second) {
      continue;
    }
    if (const auto whole = kWholeCalls.find(word.function); whole != kWholeCalls.end()) {
      calls.push_back(whole->second);
      continue;
    }
    // "x[, n]": without the period and with it; a method word is left out.
    const std::string names = function->arguments;
    const std::size_t optional = names.find('[');
    const auto call = [&](const std::string &arguments) {
      calls.push_back(std::string(word.text) + "(" + FillIn(arguments) + ")");
    };
    call(names.substr(0, optional));
    if (optional == std::string::npos || function->reading != Reading::OptionalPeriod) continue;
    call(names.substr(0, optional) + names.substr(optional + 1, names.find(']') - optional - 1));
  }
  return calls;
}

}  // namespace trovenu::bench
