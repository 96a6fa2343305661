#include "platform/files.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QTemporaryDir>
#include <csignal>
#include <string>

namespace morva {
namespace {

class Files : public testing::Test {
 protected:
  std::string At(const std::string& name) const { return (folder_.path().toStdString() + "/" + name); }
  QStringList Names() const {
    return QDir(folder_.path()).entryList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot);
  }
  QTemporaryDir folder_;
};

/// While it lives, no file grows beyond a kilobyte: the disk is as good as full.
class FullDisk {
 public:
  FullDisk() {
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit small{1024, before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
  }
  ~FullDisk() {
    setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, handler_);
  }

 private:
  rlimit before_{};
  void (*handler_)(int) = std::signal(SIGXFSZ, SIG_IGN);
};

/// Where the tests run as root, nothing is out of their reach: an ordinary user for as long as it lives.
class OrdinaryUser {
 public:
  OrdinaryUser() { EXPECT_TRUE(geteuid() != 0 || seteuid(65534) == 0); }
  ~OrdinaryUser() { EXPECT_EQ(seteuid(getuid()), 0); }
};

TEST_F(Files, AreWrittenWholeByteForByte) {
  const std::string all("line\r\n\0\xFF\n", 9);
  for (const std::string& bytes : {all, std::string(), std::string(1 << 20, 'x'), std::string("short")}) {
    for (const char* name : {"game.mrv", "sch\xC3\xB6n & <neu>", "old file"}) {
      EXPECT_FALSE(FileExists(At(name)) && bytes == all);
      EXPECT_TRUE(WriteFile(At(name), bytes)) << name;
      EXPECT_TRUE(FileExists(At(name)));
      EXPECT_TRUE(ReadFile(At(name)) == bytes) << name;
    }
  }
  EXPECT_EQ(ReadFile(At("game.mrv"), 3), "sho");
  EXPECT_EQ(Names().size(), 3);
  ASSERT_TRUE(QDir::setCurrent(folder_.path()));
  EXPECT_TRUE(FileExists("old file") && ReadFile("old file") == "short");
  QDir::setCurrent("/");
}

TEST_F(Files, WhatCantBeWrittenStaysAsItWas) {
  ASSERT_TRUE(WriteFile(At("kept"), "as it was"));
  {
    const FullDisk full;
    EXPECT_FALSE(WriteFile(At("kept"), std::string(100000, 'x')));
    EXPECT_FALSE(WriteFile(At("new"), std::string(100000, 'x')));
    EXPECT_FALSE(WriteFile(At("large"), std::string(2000, 'x')));
  }
  ASSERT_EQ(chmod(folder_.path().toUtf8(), 0555), 0);
  {
    const OrdinaryUser user;
    EXPECT_FALSE(WriteFile(At("kept"), "other"));
    EXPECT_FALSE(WriteFile(At("new"), "other"));
  }
  ASSERT_EQ(chmod(folder_.path().toUtf8(), 0755), 0);
  EXPECT_FALSE(WriteFile(At("no such folder/new"), "other"));
  EXPECT_FALSE(WriteFile(folder_.path().toStdString(), "other"));
  EXPECT_FALSE(WriteFile("", "other"));
  EXPECT_EQ(ReadFile(At("kept")), "as it was");
  EXPECT_EQ(Names(), QStringList("kept"));
}

TEST_F(Files, WhatIsNoFileIsNeitherReadNorReplaced) {
  ASSERT_EQ(mkfifo(At("pipe").c_str(), 0600), 0);
  ASSERT_EQ(mkdir(At("folder").c_str(), 0700), 0);
  ASSERT_EQ(symlink("nowhere", At("dangling").c_str()), 0);
  for (const char* name : {"pipe", "folder", "dangling", "missing"}) {
    EXPECT_FALSE(FileExists(At(name))) << name;
    EXPECT_EQ(ReadFile(At(name)), std::nullopt) << name;
  }
  EXPECT_FALSE(WriteFile(At("pipe"), "bytes"));
  EXPECT_FALSE(WriteFile(At("folder"), "bytes"));
  struct stat now {};
  EXPECT_TRUE(stat(At("pipe").c_str(), &now) == 0 && S_ISFIFO(now.st_mode));
  EXPECT_EQ(Names().size(), 3);
}

}  // namespace
}  // namespace morva
