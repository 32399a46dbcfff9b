#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace trovenu::fuzz {

/// The bytes of one run, read from the front. Texts come first and end with a zero byte, and choices follow,
/// so that a plain text is a good input. Behind the end every text is empty and every choice 0.
class Input {
 public:
  Input(const std::uint8_t *data, std::size_t size)
      : rest_(reinterpret_cast<const char *>(data), data == nullptr ? 0 : size) {}

  bool IsEmpty() const { return rest_.empty(); }
  /// The bytes up to the next zero byte, which is stepped over.
  std::string Text();
  /// All that is left, zero bytes included.
  std::string Rest();
  /// The next `size` bytes, or those that are left, as an input of their own.
  Input Part(int size);
  unsigned char Byte();
  /// A choice below `n`, which is at least 1.
  int Below(int n);
  bool Flag() { return Below(2) != 0; }
  /// A number: mostly a small one or a price, now and then any double.
  double Number();
  /// The same as text, now and then one that is no number.
  std::string NumberText();

 private:
  explicit Input(std::string_view bytes) : rest_(bytes) {}

  std::string_view rest_;
};

}  // namespace trovenu::fuzz
