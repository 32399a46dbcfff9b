#include <string>

#include "trovenu/indicator/index.h"

namespace trovenu {
namespace {

// Holds the value of the statement that the condition is about.
const std::string kValue = "Black1Box1Exp1";

std::string Condition(TypeBlackBox kind, bool isFirstSense, const std::string &level1,
                      const std::string &level2) {
  const std::string now = kValue;
  const std::string before = kValue + "(1)";
  const std::string twoBefore = kValue + "(2)";
  switch (kind) {
    case BlackBoxCross:
      return std::string("; ") + (isFirstSense ? "CrossUp(" : "CrossDown(") + now + "," + level1 + ")";
    case BlackBoxLevel:
      return "; " + now + (isFirstSense ? " >= " + level1 : " <= " + level2);
    case BlackBoxBand:
      return "; " + now + " >= " + level1 + " And " + now + " <= " + level2;
    case BlackBoxTurn:
      return isFirstSense ? "; " + twoBefore + " > " + before + " And " + before + " <= " + now
                          : "; " + twoBefore + " <= " + before + " And " + before + " > " + now;
    case BlackBoxTrend:
      return isFirstSense ? "; " + twoBefore + " <= " + before + " And " + before + " <= " + now
                          : "; " + twoBefore + " > " + before + " And " + before + " > " + now;
    default:
      return "";
  }
}

}  // namespace

void SIndex::ConvBlackBoxToExpression(int slot, TypeBlackBox kind, const double *params) {
  if (slot < 0 || slot >= kExpressions || params == nullptr) return;
  const auto level = [](double value) {
    SString text;
    text.dtos(value, 0);
    return std::string(text.View());
  };
  SString work = Expression[slot];
  SkipComments(work);
  std::string text(work.View());
  const auto lastSemicolon = [&text] {
    const std::size_t at = text.rfind(';');
    return at == std::string::npos ? std::size_t{0} : at;
  };
  // Required: the last ";" goes, whatever stands behind it, unless it is the first character.
  if (const std::size_t at = lastSemicolon(); at >= 1) text.erase(at, 1);
  const std::size_t before = lastSemicolon();
  text.insert(before >= 1 ? before + 1 : 0, "Sum(" + kValue + " = ");
  text += Condition(kind, params[0] == 0.0, level(params[1]), level(params[2]));
  text += ",0)>==";
  Expression[slot] = SString(std::string_view(text));
}

}  // namespace trovenu
