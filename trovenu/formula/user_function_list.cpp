#include "trovenu/formula/user_function_list.h"

#include <cstring>
#include <new>
#include <vector>

#include "trovenu/platform/code_page_text.h"
#include "trovenu/support/growing_list.h"
#include "trovenu/support/text_edit.h"

namespace trovenu {
namespace {

constexpr int kRoom = 100;
constexpr int kRoomAfterClear = 20;
constexpr const char *kSeparator = "|";

}  // namespace

SFunctionList::SFunctionList() { Reset(kRoom); }

SFunctionList::SFunctionList(const SFunctionList &other) : SFunction(other) {
  Reset(kRoom);
  *this = other;
}

SFunctionList &SFunctionList::operator=(const SFunctionList &other) {
  if (this == &other) return *this;
  Clear();
  for (int i = 0; i < other.Size; ++i) Add(other.Data[static_cast<std::size_t>(i)]);
  return *this;
}

SFunctionList::~SFunctionList() = default;

void SFunctionList::Reset(int room) {
  Data.reset();
  Size = 0;
  MaxSize = 0;
  GrowBy = room;
  GrowListTo(Data, Size, MaxSize, room);
}

void SFunctionList::Add(const SFunction &function) {
  // An element of the list itself would move with it.
  const SFunction copy(function);
  if (!GrowFullList(Data, Size, MaxSize, GrowBy)) return;
  Data[static_cast<std::size_t>(Size++)] = copy;
}

void SFunctionList::Delete(int i) { DeleteFromList(Data, Size, i); }

void SFunctionList::Clear() { Reset(kRoomAfterClear); }

void SFunctionList::SetMaxSize(long n) { GrowListTo(Data, Size, MaxSize, n); }

SFunction &SFunctionList::operator[](long i) {
  if (i < 0 || i >= Size) return *this;
  return Data[static_cast<std::size_t>(i)];
}

const SFunction &SFunctionList::operator[](long i) const {
  if (i < 0 || i >= Size) return *this;
  return Data[static_cast<std::size_t>(i)];
}

int SFunctionList::Find(const char *name) const {
  for (int i = 0; i < Size; ++i) {
    if (EqualNoCase(Data[static_cast<std::size_t>(i)].IndexName.c_str(), name)) return i;
  }
  return -1;
}

void SFunctionList::SetExpressionWithVariable(char *text) {
  if (text == nullptr) return;
  DeleteEscapeCharacter(text);
  std::vector<char> field(std::strlen(text) + 1);
  const auto cut = [&](SString &out) {
    const bool more = CutStringUntilKey(text, field.data(), kSeparator) != 0;
    out = field.data();
    return more;
  };
  SFunction function;
  bool more = cut(function.IndexName);
  more = cut(function.Expression) && more;
  for (int i = 0; more && i < kParameters; ++i) more = cut(function.VarName[i]);
  Add(function);
}

}  // namespace trovenu
