#include "tools/trovenu/output_file.h"

#include <cerrno>
#include <filesystem>
#include <random>
#include <system_error>
#include <utility>

#include "tools/trovenu/failure.h"
#include "tools/trovenu/path_text.h"

namespace trovenu::tool {

namespace fs = std::filesystem;

namespace {

// A name that no other run uses at the same time.
std::string NameBeside(const std::string &target) {
  std::random_device random;
  return target + ".new-" + std::to_string(random()) + std::to_string(random());
}

}  // namespace

OutputFile::OutputFile(const std::string &path)
    : shown_(path.empty() ? "standard output" : path), target_(path), file_(stdout) {
  if (path.empty()) return;
  std::error_code fault;
  const fs::file_status status = fs::status(PathOf(path), fault);
  if (fs::exists(status) && !fs::is_regular_file(status)) {
    file_ = std::fopen(path.c_str(), "wb");
    if (file_ == nullptr) Fail();
    return;
  }
  // The file itself is replaced, not a link to it.
  const fs::path real = fs::canonical(PathOf(path), fault);
  if (!fault) target_ = TextOf(real);
  std::string beside = NameBeside(target_);
  file_ = std::fopen(beside.c_str(), "wb");
  if (file_ == nullptr) Fail();
  beside_ = std::move(beside);
  if (fs::exists(status)) fs::permissions(PathOf(beside_), status.permissions(), fault);
}

OutputFile::~OutputFile() {
  if (file_ != nullptr && file_ != stdout) std::fclose(file_);
  if (!beside_.empty()) std::remove(beside_.c_str());
}

void OutputFile::Write(std::string_view text) {
  if (std::fwrite(text.data(), 1, text.size(), file_) != text.size()) Fail();
}

void OutputFile::Commit() {
  if (std::fflush(file_) != 0) Fail();
  std::FILE *const file = std::exchange(file_, nullptr);
  if (file != stdout && std::fclose(file) != 0) Fail();
  if (beside_.empty()) return;
  std::error_code fault;
  fs::rename(PathOf(beside_), PathOf(target_), fault);
  if (fault) throw Failure(shown_ + ": can't be written (" + fault.message() + ")");
  beside_.clear();
}

void OutputFile::Fail() {
  throw Failure(shown_ + ": can't be written (" + std::generic_category().message(errno) + ")");
}

}  // namespace trovenu::tool
