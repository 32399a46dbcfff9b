#include <algorithm>
#include <string>

#include "trovenu/indicator/index.h"
#include "trovenu/support/korean.h"
#include "trovenu/support/number_text.h"
#include "trovenu/support/text_edit.h"

namespace trovenu {

IndexError SIndex::CheckError() {
  LastError = IndexError();
  for (int i = 0; i < kVariables; ++i) {
    VarName[i].Trim();
    VarValue[i].Trim();
    // Required: only a variable without a name is looked at, and it needs a value.
    if (VarName[i].IsEmpty() && VarValue[i].IsEmpty()) {
      LastError.Message = FormatValue("%s에 해당하는 변수값이 없읍니다."_kr, VarName[i].c_str());
      LastError.BlVariable = 1;
      return LastError;
    }
  }
  for (int i = 0; i < kExpressions; ++i) {
    const std::string_view text = Expression[i].Trim().View();
    if (std::count(text.begin(), text.end(), '(') != std::count(text.begin(), text.end(), ')')) {
      LastError.Message = "괄호의 개수가 맞지 않습니다."_kr;
      LastError.ExpIndex = i;
      return LastError;
    }
  }
  return LastError;
}

void SIndex::SkipComments(SString &text) {
  std::string rest(text.View());
  // Required: the length is that of the beginning, and the character behind a deletion is passed over.
  const std::size_t length = rest.size();
  for (std::size_t i = 0; i < length && i < rest.size(); ++i) {
    if (rest[i] != '/') continue;
    if (i + 1 >= length) break;
    const char next = i + 1 < rest.size() ? rest[i + 1] : '\0';
    if (next != '/' && next != '*') continue;
    const std::size_t end = next == '/' ? rest.find_first_of("\n\r", i + 2) : rest.find("*/", i + 2);
    rest.erase(i, end == std::string::npos ? end : end - i);
    if (end == std::string::npos) break;
  }
  text = SString(std::string_view(rest));
}

char *SIndex::ProcessString(char *text) { return DeleteAllSpace(DeleteEscapeCharacter(text)); }

}  // namespace trovenu
