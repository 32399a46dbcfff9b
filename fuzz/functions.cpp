#include "fuzz/functions.h"

#include <algorithm>
#include <string>

#include "trovenu/formula/words.h"
#include "trovenu/platform/code_page_text.h"

namespace trovenu::fuzz {

SFunctionList ReadFunctions(Input &input, std::size_t most) {
  SFunctionList list;
  for (const char *name : kFunctionNames) {
    SFunction function;
    function.IndexName = name;
    function.Expression = input.Text().substr(0, most).c_str();
    function.VarName[0] = "a";
    function.VarName[1] = "b";
    list.Add(function);
  }
  return list;
}

bool MayLengthen(std::string_view formula) {
  const auto isSame = [](char a, char b) { return ToUpperAscii(a) == ToUpperAscii(b); };
  for (const Word &word : Words()) {
    if (word.function != FunctionId::Shift) continue;
    const std::string_view text = word.text;
    if (std::search(formula.begin(), formula.end(), text.begin(), text.end(), isSame) != formula.end())
      return true;
  }
  return false;
}

}  // namespace trovenu::fuzz
