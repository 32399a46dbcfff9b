#pragma once

#include <string>

#include "fuzz/input.h"
#include "trovenu/support/archive.h"

namespace trovenu::fuzz {

/// What `object` stores, as INI text.
template <class Object, class... Arguments>
std::string StoredText(const Object &object, Arguments... arguments) {
  CKqArchive archive;
  object.Store(archive, arguments...);
  CMemFile file;
  archive.Save(&file);
  return std::string(file.View());
}

/// An archive with this INI text.
CKqArchive ArchiveOf(std::string_view text);

/// The INI text with other values, as many as the input has to say: numbers mostly, and texts.
std::string WithOtherValues(std::string_view text, Input &input);

}  // namespace trovenu::fuzz
