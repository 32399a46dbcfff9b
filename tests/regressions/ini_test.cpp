// Faults that were fixed once.

#include <gtest/gtest.h>

#include "trovenu/support/archive.h"

namespace trovenu::tests {
namespace {

// Such a key at the begin of a text was read as the mark of an editor and the rest of the key.
TEST(IniRegression, AKeyMayBeginAsTheMarkOfAnEditor) {
  CKqArchive archive;
  archive.SetStr("\xEF\xBB\xBFx", "value", "");
  CMemFile file;
  archive.Save(&file);
  CKqArchive loaded;
  loaded.Load(&file);
  EXPECT_EQ(loaded.GetStr("\xEF\xBB\xBFx", "absent"), "value");
  EXPECT_EQ(loaded.GetStr("x", "absent"), "absent");
}

}  // namespace
}  // namespace trovenu::tests
