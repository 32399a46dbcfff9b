#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace trovenu::tests {

/// Runs a program as a process of its own in `folder` and waits for its end. It reads the file "in" of the
/// folder `streams` and writes "out" and "err" there. Gives its exit code, -1 if it could not be started or
/// did not end by itself.
int RunProgram(const std::string &program, const std::vector<std::string> &arguments,
               const std::filesystem::path &folder, const std::filesystem::path &streams);

}  // namespace trovenu::tests
