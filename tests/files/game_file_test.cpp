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
  void SetUp() override { Sit(); }

  std::string Path(const std::string& name) const { return folder_.filePath(name.c_str()).toStdString(); }

  /// Clicks the menu item and gives the dialog that opens, with this title and filter, the path, or cancels it where
  /// there is none. What the program says about it, which the user answers with Yes or OK; a dialog that comes again is
  /// cancelled.
  static std::string Use(
      Menu& item, const std::string& dialog, const std::string& path, void (*meanwhile)() = [] {}) {
    const auto on_top = [] { return frmToolWindow->Native()->windowHandle()->flags() & Qt::WindowStaysOnTopHint; };
    std::string seen;
    std::string said;
    QTimer user;
    user.callOnTimeout([&] {
      QWidget* shown = QApplication::activeModalWidget();
      if (auto* question = qobject_cast<QMessageBox*>(shown)) {
        said = question->text().toStdString();
        QAbstractButton* yes = question->button(QMessageBox::Yes);
        return (yes != nullptr ? yes : question->button(QMessageBox::Ok))->click();
      }
      auto* box = qobject_cast<QFileDialog*>(shown);
      if (box == nullptr) return;
      auto* name = box->findChild<QLineEdit*>("fileNameEdit");
      if (!said.empty()) {
        EXPECT_EQ(QFileInfo(path.c_str()).fileName(), QFileInfo(name->text()).fileName()) << "it can be mended";
        return box->reject();
      }
      if (!seen.empty()) return;
      seen = (box->windowTitle() + "|" + box->nameFilters().join(";")).toStdString();
      EXPECT_FALSE(on_top()) << "it would lie before a desktop's own dialog";
      meanwhile();
      if (path.empty()) return box->reject();
      // Typed, as a user does: selecting a file that isn't there does nothing.
      name->setText(path.c_str());
      // The question whether to overwrite comes from within, and the timer must go on for it.
      QMetaObject::invokeMethod(box, "accept", Qt::QueuedConnection);
    });
    user.start(5);
    item.Click();
    EXPECT_TRUE(seen == dialog && on_top()) << seen;
    return said;
  }

  QTemporaryDir folder_;
};

TEST_F(GameFile, IsTheBoardAtTheEndOfTheDialogAndComesBackHereAndThere) {
  QDir(folder_.path()).mkdir("a * folder");
  EXPECT_EQ(Use(frmChess->mnuSaveGame, kSave, Path("a * folder/game")), "");
  EXPECT_EQ(ReadFile(Path("a * folder/game")), frmChess->BoardLine() + "\r\n");
  WriteFile(Path("game"), std::string(5000, 'x'));
  EXPECT_NE(Use(frmChess->mnuSaveGame, kSave, Path("game"), [] { frmChess->SetUpCheckers(); }), "");
  const std::string board = Board(), line = frmChess->BoardLine();
  EXPECT_EQ(ReadFile(Path("game")), line + "\r\n");
  frmChess->ClearBoard();
  EXPECT_EQ(Sent(), "");
  EXPECT_EQ(Use(frmChess->mnuOpenGame, kOpen, Path("game")), "");
  EXPECT_TRUE(Board() == board && Sent() == "1__" + line && History().empty());
}

// What of a file comes on the board here is held against its bytes with the fuzzer's seeds.
TEST_F(GameFile, IsSentUpToTheEndOfItsFirstLine) {
  const std::string line = std::string(63, 'o') + "j", tail = "\xFF\x01 any bytes\r" + std::string(3000, 'z');
  const std::pair<std::string, std::string> files[] = {
      {"", ""},
      {line.substr(1) + "\r\n" + line, ""},
      {line, line},
      {line + "\n" + line, line},
      {line + "\r", line + "\r"},
      {line + tail + "\r\n" + line, line + tail},
      {std::string(3 << 20, 'e'), std::string(MessageReader::kMaxMessage - 3, 'e')}};
  for (const auto& [bytes, sent] : files) {
    WriteFile(Path("game"), bytes);
    OpenGame(*frmChess, Path("game"));
    EXPECT_TRUE(Sent() == (sent.empty() ? "" : "1__" + sent)) << bytes.substr(0, 100);
  }
}

TEST_F(GameFile, NothingHappensWithoutOne) {
  const std::string board = frmChess->BoardLine();
  const std::string folder = Path("no folder");
  const std::pair<std::string, std::string> names[] = {{"", ""},
                                                       {folder + "/game", "There is no folder " + folder + "."},
                                                       {"/sys/game", "You may not write game in /sys."}};
  for (const auto& [path, said] : names) {
    EXPECT_EQ(Use(frmChess->mnuOpenGame, kOpen, path), "");
    EXPECT_EQ(Use(frmChess->mnuSaveGame, kSave, path), said);
    EXPECT_EQ(Use(frmChess->mnuSaveChat, kSaveChat, path), said);
  }
  OpenGame(*frmChess, Path("missing"));
  EXPECT_TRUE(QDir(folder_.path()).isEmpty() && frmChess->BoardLine() == board && Sent().empty());
}

}  // namespace
}  // namespace morva
