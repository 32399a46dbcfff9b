#pragma once

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <string_view>

namespace trovenu::tests {

/// Damages files at random, alike in every run: bytes flipped and overwritten, pieces cut off, left out and
/// doubled.
class Damage {
 public:
  std::string Of(std::string_view good) {
    std::string bytes(good);
    for (std::size_t i = Pick(4) + 1; i > 0 && !bytes.empty(); --i) Once(&bytes);
    return bytes;
  }

 private:
  /// A number below `below`; 0 if that is 0.
  std::size_t Pick(std::size_t below) { return below == 0 ? 0 : random_() % below; }

  /// A place; the first bytes, where heads stand, more often than others.
  std::size_t Place(const std::string &bytes) {
    return Pick(2) == 0 ? Pick(bytes.size()) : Pick(std::min<std::size_t>(bytes.size(), 100));
  }

  void Once(std::string *bytes) {
    constexpr std::string_view kEdges("\x00\xFF\x7F\x80\x1A\r\n \"=[", 11);
    const std::size_t at = Place(*bytes);
    switch (Pick(6)) {
      case 0:
        return bytes->resize(at);
      case 1:
        bytes->erase(at, Pick(50) + 1);
        return;
      case 2:
        bytes->insert(at, bytes->substr(Place(*bytes), Pick(50)));
        return;
      case 3:
        (*bytes)[at] = kEdges[Pick(kEdges.size())];
        return;
      case 4:
        (*bytes)[at] = static_cast<char>(Pick(256));
        return;
      default:
        (*bytes)[at] = static_cast<char>((*bytes)[at] ^ (1 << Pick(8)));
    }
  }

  std::mt19937 random_{20240102};
};

}  // namespace trovenu::tests
