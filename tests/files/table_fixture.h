#pragma once

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <string>

#include "files/files.h"
#include "files/frm_instructions.h"
#include "net/frm_control.h"
#include "net/frm_welcome.h"
#include "table/frm_tool_window.h"
#include "tests/support.h"

namespace morva {

/// The main window with its file menus, as a guest's program has it, and an empty folder for files.
class TableTest : public testing::Test {
 protected:
  void SetUp() override {
    frmChess.made = ConnectFileMenus;
    frmWelcome->txtHost.Text = "127.0.0.1";
    Load(frmControl);
    frmChess->Show();
  }

  void TearDown() override {
    Unload(frmInstructions);
    Unload(frmChess);
    QTest::qWait(0);
  }

  std::string Path(const std::string& name) const {
    return folder_.filePath(QString::fromStdString(name)).toStdString();
  }

  void Put(const std::string& name, const std::string& bytes) const {
    QFile file(QString::fromStdString(Path(name)));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(bytes.data(), static_cast<qint64>(bytes.size())), static_cast<qint64>(bytes.size()));
  }

  /// "(none)" where there is no such file.
  std::string Bytes(const std::string& name) const {
    QFile file(QString::fromStdString(Path(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "(none)";
  }

  QStringList Files() const { return QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden); }

 private:
  QTemporaryDir folder_;
};

}  // namespace morva
