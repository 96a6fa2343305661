#include "platform/system/plain_files.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QTemporaryDir>
#include <csignal>

namespace morva {
namespace {

class Files : public testing::Test {
 protected:
  std::string At(const std::string& name) const { return folder_.filePath(name.c_str()).toStdString(); }
  auto Count() const { return QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden).size(); }
  QTemporaryDir folder_;
};

TEST_F(Files, AreWrittenWholeByteForByte) {
  for (const std::string& bytes : {std::string(1 << 20, 'x'), std::string(), std::string("line\r\n\0\xFF\n", 9)}) {
    for (const char* name : {"game.mrv", "sch\xC3\xB6n & <neu>"}) {
      EXPECT_TRUE(WriteFile(At(name), bytes) && FileExists(At(name)) && ReadFile(At(name)) == bytes) << name;
    }
  }
  EXPECT_EQ(ReadFile(At("game.mrv"), 3), "lin");
  EXPECT_EQ(Count(), 2);
  ASSERT_TRUE(mkfifo(At("pipe").c_str(), 0600) == 0 && mkdir(At("folder").c_str(), 0700) == 0);
  for (const char* name : {"pipe", "folder", "missing"}) {
    EXPECT_TRUE(!FileExists(At(name)) && ReadFile(At(name)) == std::nullopt) << name;
  }
  EXPECT_FALSE(WriteFile(At("pipe"), "bytes") || WriteFile(At("folder"), "bytes"));
}

TEST_F(Files, WhatCantBeWrittenStaysAsItWas) {
  ASSERT_TRUE(WriteFile(At("kept"), "as it was") && WriteFile(At("open"), "") && chmod(At("open").c_str(), 0666) == 0);
  // As good as a full disk: a part of each is taken.
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  const rlimit full{1024, before.rlim_max};
  setrlimit(RLIMIT_FSIZE, &full);
  for (const char* name : {"kept", "new"}) EXPECT_FALSE(WriteFile(At(name), std::string(100000, 'x'))) << name;
  setrlimit(RLIMIT_FSIZE, &before);

  // For root nothing is read-only.
  ASSERT_TRUE(chmod(At("kept").c_str(), 0444) == 0 && chmod(At("").c_str(), 0555) == 0 &&
              (geteuid() != 0 || seteuid(65534) == 0));
  EXPECT_FALSE(WriteFile(At("kept"), "other") || WriteFile(At("new"), "other"));
  // A file that may be written can be, where no other one can stand beside it.
  for (const std::string& bytes : {std::string(5000, 'x'), std::string("short")}) {
    EXPECT_TRUE(WriteFile(At("open"), bytes) && ReadFile(At("open")) == bytes);
  }
  setrlimit(RLIMIT_FSIZE, &full);
  EXPECT_TRUE(!WriteFile(At("open"), std::string(2000, 'x')) && ReadFile(At("open")) == "short");
  setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, handler);
  ASSERT_TRUE(seteuid(getuid()) == 0 && chmod(At("").c_str(), 0755) == 0);
  EXPECT_FALSE(WriteFile(At("no folder/new"), "other") || WriteFile(At(""), "other") || WriteFile("", "other"));
  EXPECT_EQ(ReadFile(At("kept")), "as it was");
  EXPECT_EQ(Count(), 2);
}

}  // namespace
}  // namespace morva
