#pragma once

#include <string>
#include <string_view>

#include "trovenu/platform/platform.h"
#include "trovenu/support/table_writer.h"

/// \file
/// What the pages of a back-test share: how a page reaches its file, and the head with the facts of the run.
/// Pages are in the Korean code page, which they declare. They rely on the browser in one place: tables of
/// rows that are followed by another block have no end tag.

namespace trovenu {

/// A value of a table as text of a page: the characters that mean something in a page are written as their
/// names.
std::string EscapeHtml(std::string_view value);

/// What differs between the heads of the two kinds of pages. Texts are in the code page.
struct PageHead {
  const char *beforeTitle;
  const char *behindTitle;
  /// What follows the labels on the left.
  const char *leftColon[3];
};

/// The head of the first pages, and that of the later ones, which are meant for print.
extern const PageHead kScreenHead;
extern const PageHead kPrintHead;

/// A coloured line across a page, made of a table.
std::string HtmlRule(int width);

/// One page on its way to a file. It appears whole or not at all, and only a piece of it is in memory.
class HtmlPage {
 public:
  explicit HtmlPage(const SString &path) : file_(path.c_str()) {}

  /// Writes the head with the facts of the run whose record `runs` stands at.
  void WriteHead(const PageHead &head, const DB &runs);
  HtmlPage &operator<<(std::string_view text);
  /// Writes the end and puts the page in place.
  void Finish();

 private:
  NewFile file_;
  std::string piece_;
};

}  // namespace trovenu
