#pragma once

namespace trovenu {

/// One section of a `CIniFile` or a `CIniMemFile`, with the members that the field tables load from and store
/// to. Refers to the file and to the section's name.
template <class File>
class IniSection {
 public:
  IniSection(File &file, const char *name) : file_(file), name_(name) {}

  int GetInt(const char *key, int defaultValue) { return file_.GetInt(name_, key, defaultValue); }
  double GetDbl(const char *key, double defaultValue) { return file_.GetDouble(name_, key, defaultValue); }
  auto GetStr(const char *key, const char *defaultValue) { return file_.GetString(name_, key, defaultValue); }

  void SetInt(const char *key, int value, int defaultValue) {
    if constexpr (requires { file_.WriteInt(name_, key, value, defaultValue); }) {
      file_.WriteInt(name_, key, value, defaultValue);
    } else {
      file_.WriteInt(name_, key, value);
    }
  }
  void SetDbl(const char *key, double value, double defaultValue) {
    if constexpr (requires { file_.WriteDouble(name_, key, value, defaultValue); }) {
      file_.WriteDouble(name_, key, value, defaultValue);
    } else {
      file_.WriteDouble(name_, key, value);
    }
  }
  void SetStr(const char *key, const char *value, const char *defaultValue) {
    if constexpr (requires { file_.WriteString(name_, key, value, defaultValue); }) {
      file_.WriteString(name_, key, value, defaultValue);
    } else {
      file_.WriteString(name_, key, value);
    }
  }

 private:
  File &file_;
  const char *name_;
};

}  // namespace trovenu
