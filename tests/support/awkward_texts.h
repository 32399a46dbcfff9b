#pragma once

#include <string>
#include <vector>

namespace trovenu::tests {

/// Texts that a store might trip over: all bytes but 0, all two-byte characters, marks of its own notation,
/// blanks.
inline std::vector<std::string> AwkwardTexts() {
  std::vector<std::string> texts;
  for (const char *text : {"",
                           " ",
                           "a b",
                           "  blanks around\t",
                           "trailing ",
                           "\"",
                           "\"\"",
                           "\"quoted\"",
                           "say \"hi\"",
                           "line\nbreak\r\nand\rreturn",
                           "\n",
                           "a=b",
                           "=",
                           "[section]",
                           "[",
                           "]",
                           "; comment",
                           "# comment",
                           "100%",
                           "%41%0A",
                           "\"%41\"",
                           "C:\\new\\table.dbf",
                           "'single'",
                           "\x1A",
                           "\xEF\xBB\xBF",
                           "\xB0\xA1\xB3\xAA\xB4\xD9",
                           "\xB0",
                           "12",
                           "nan"})
    texts.emplace_back(text);
  std::string all;
  for (int byte = 1; byte < 256; ++byte) all += static_cast<char>(byte);
  texts.push_back(all);
  std::string characters;
  for (int lead = 0x81; lead <= 0xFE; ++lead) {
    for (const int trail : {0x41, 0x5A, 0x61, 0x7A, 0x81, 0xA1, 0xFE}) {
      characters += static_cast<char>(lead);
      characters += static_cast<char>(trail);
    }
  }
  texts.push_back(characters);
  return texts;
}

}  // namespace trovenu::tests
