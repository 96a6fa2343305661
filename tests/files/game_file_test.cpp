#include <QFileDialog>
#include <QLineEdit>
#include <QTemporaryDir>

#include "files/file_menus.h"
#include "net/message_reader.h"
#include "platform/system/plain_files.h"
#include "tests/game.h"

namespace morva {
namespace {

constexpr char kOpen[] = "Open Game|Morva Game (*.mrv)";
constexpr char kSave[] = "Save Game as|Morva Game (*.mrv)";
constexpr char kSaveChat[] = "Save Chat|Text (*.txt)";

class GameFile : public GameTest {
 protected:
  void SetUp() override {
    frmChess.made = ConnectFileMenus;
    Sit();
  }

  std::string Path(const std::string& name) const { return folder_.filePath(name.c_str()).toStdString(); }

  /// Clicks the menu item and gives the dialog that opens, with this title and filter, the path, or cancels it where
  /// there is none. Whether the user was asked a question about it.
  static bool Use(Menu& item, const std::string& dialog, const std::string& path,
                  const std::function<void()>& meanwhile = {}) {
    std::string seen;
    bool asked = false;
    QTimer user;
    user.callOnTimeout([&] {
      QWidget* shown = QApplication::activeModalWidget();
      if (auto* question = qobject_cast<QMessageBox*>(shown)) {
        asked = true;
        return question->button(QMessageBox::Yes)->click();
      }
      auto* box = qobject_cast<QFileDialog*>(shown);
      if (box == nullptr || !seen.empty()) return;
      seen = (box->windowTitle() + "|" + box->nameFilters().join(";")).toStdString();
      if (meanwhile) meanwhile();
      if (path.empty()) return box->reject();
      // Typed, as a user does: selecting a file that isn't there does nothing.
      box->findChild<QLineEdit*>("fileNameEdit")->setText(path.c_str());
      // The question whether to overwrite comes from within, and the timer must go on for it.
      QMetaObject::invokeMethod(box, "accept", Qt::QueuedConnection);
    });
    user.start(5);
    item.Click();
    EXPECT_EQ(seen, dialog);
    return asked;
  }

  QTemporaryDir folder_;
};

TEST_F(GameFile, IsTheBoardAtTheEndOfTheDialogAndComesBackHereAndThere) {
  WriteFile(Path("game"), std::string(5000, 'x'));
  EXPECT_TRUE(Use(frmChess->mnuSaveGame, kSave, Path("game"), [] {
    frmChess->SetUpCheckers();
    frmChess->king(27, 1);
  }));
  EXPECT_EQ(Sent(), "");
  const std::string board = Board();
  const std::string line = frmChess->BoardLine();
  EXPECT_EQ(ReadFile(Path("game")), line + "\r\n");
  frmChess->ClearBoard();
  Sent();
  EXPECT_FALSE(Use(frmChess->mnuOpenGame, kOpen, Path("game")));
  EXPECT_EQ(Board(), board);
  EXPECT_EQ(Sent(), "1__" + line);
  EXPECT_TRUE(History().empty());
}

TEST_F(GameFile, IsOnlyReadUpToTheEndOfItsFirstLine) {
  const std::string line = std::string(63, 'o') + "j";
  const std::string tail = std::string("\xFF\x01 any bytes\r", 12) + std::string(3000, 'z');
  const struct {
    std::string bytes;
    std::size_t read, sent;  // how much of them
  } files[] = {{"", 0, 0},
               {"\r\n" + line, 0, 0},
               {line.substr(1) + "\r\n" + line, 63, 0},
               {line, 64, 64},
               {line + "\n", 64, 64},
               {line + "\r", 64, 65},
               {line + "\r\n" + line, 64, 64},
               {line + tail + "\r\n" + line, 64, 64 + tail.size()},
               {std::string(3 << 20, 'e'), 64, MessageReader::kMaxMessage - 3}};
  for (const auto& file : files) {
    frmChess->SetUpChess();
    std::string board = frmChess->BoardLine();
    Sent();
    WriteFile(Path("game"), file.bytes);
    OpenGame(*frmChess, Path("game"));
    board.replace(0, file.read, file.bytes, 0, file.read);
    EXPECT_EQ(frmChess->BoardLine(), board) << file.bytes.substr(0, 100);
    EXPECT_TRUE(Sent() == (file.sent == 0 ? "" : "1__" + file.bytes.substr(0, file.sent)));
  }
}

TEST_F(GameFile, NothingHappensWithoutOne) {
  frmChess->out("a line");
  const std::string board = frmChess->BoardLine();
  for (const std::string& path : {std::string(), Path("no folder/game"), std::string("/proc/game")}) {
    Use(frmChess->mnuOpenGame, kOpen, path);
    Use(frmChess->mnuSaveGame, kSave, path);
    Use(frmChess->mnuSaveChat, kSaveChat, path);
    EXPECT_FALSE(FileExists(path)) << path;
  }
  OpenGame(*frmChess, Path("missing"));
  EXPECT_TRUE(QDir(folder_.path()).isEmpty());
  EXPECT_TRUE(frmChess->BoardLine() == board && Sent().empty() && frmChess->txtOut.Text == "\r\na line");
}

TEST_F(GameFile, TheChatHasOneOfItsOwn) {
  WriteFile(Path("chat.txt"), "an older chat");
  EXPECT_TRUE(Use(frmChess->mnuSaveChat, kSaveChat, Path("chat.txt")));
  EXPECT_EQ(ReadFile(Path("chat.txt")), "\r\n");
  frmChess->out("<Me>  h\xC3\xA9 & <b>you</b>");
  frmChess->out("\xE2\x99\x94");
  EXPECT_FALSE(Use(frmChess->mnuSaveChat, kSaveChat, Path("chat")));
  EXPECT_EQ(ReadFile(Path("chat")), "\r\n<Me>  h\xC3\xA9 & <b>you</b>\r\n\xE2\x99\x94\r\n");
  EXPECT_EQ(frmChess->cd.InitDir, App::Path());
}

}  // namespace
}  // namespace morva
