#include "trovenu/support/ini_transfer.h"

#include "trovenu/platform/platform.h"

namespace trovenu {

bool LoadIniText(const std::string &path, IniText *text) {
  std::string bytes;
  if (!ReadFileBytes(path, &bytes)) return false;
  text->Parse(bytes);
  return true;
}

bool LoadIniText(CMemFile *file, IniText *text) {
  if (file == nullptr) return false;
  text->Parse(file->View());
  return true;
}

bool SaveIniText(const IniText &text, CMemFile *file) {
  if (file == nullptr) return false;
  const std::string bytes = text.Text();
  file->SetLength(0);
  file->Write(bytes.data(), static_cast<unsigned int>(bytes.size()));
  file->SeekToBegin();
  return file->GetLength() == bytes.size();
}

bool MergeIntoIniFile(const std::string &path, const IniText &changes, const IniText &fresh) {
  // Whoever else merges waits, so that neither loses what the other has written.
  File file;
  do {
    if (!file.Open(path, File::Access::Read)) {
      // A file that can't be read is not to be lost for it.
      return !FileExist(path.c_str()) && WriteFileBytes(path, fresh.Text(), Flush::ToDisk);
    }
  } while (file.Lock() && !file.IsAt(path));
  std::string bytes;
  if (!ReadFileBytes(path, &bytes)) return false;
  IniText text(IniText::LetterCase::Ignored);
  text.Parse(bytes);
  text.Merge(changes);
  const std::string merged = text.Text();
  return merged == bytes || WriteFileBytes(path, merged, Flush::ToDisk);
}

}  // namespace trovenu
