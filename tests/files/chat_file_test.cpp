#include "platform/application.h"
#include "tests/files/dialogs.h"
#include "tests/files/table_fixture.h"

namespace morva {
namespace {

using ChatFile = TableTest;

TEST_F(ChatFile, HoldsTheWholeLogAndALineEnd) {
  frmChess->out("<Me>  h\xC3\xA9 & <b>you</b>");
  frmChess->out("\xE2\x99\x94");
  DialogUser user(Path("chat"));
  frmChess->mnuSaveChat.Click();
  EXPECT_EQ(user.title, "Save Chat");
  EXPECT_EQ(user.filter, "Text (*.txt)");
  EXPECT_EQ(frmChess->cd.InitDir, App::Path());
  EXPECT_EQ(Bytes("chat"), "\r\n<Me>  h\xC3\xA9 & <b>you</b>\r\n\xE2\x99\x94\r\n");
}

TEST_F(ChatFile, OfAnEmptyLogReplacesAnotherFileByOneLineEnd) {
  Put("chat.txt", "an older chat");
  DialogUser user(Path("chat.txt"));
  frmChess->mnuSaveChat.Click();
  EXPECT_EQ(user.questions, 1);
  EXPECT_EQ(Bytes("chat.txt"), "\r\n");
}

TEST_F(ChatFile, IsNotWrittenWhereTheDialogIsCancelledOrTheNameIsBad) {
  frmChess->out("a line");
  for (const std::string& name : {std::string(), Path("no such folder/chat.txt"), std::string("/proc/chat.txt")}) {
    DialogUser user(name);
    frmChess->mnuSaveChat.Click();
    EXPECT_TRUE(user.saw_dialog()) << name;
  }
  EXPECT_TRUE(Files().isEmpty());
  EXPECT_EQ(frmChess->txtOut.Text(), "\r\na line");
}

}  // namespace
}  // namespace morva
