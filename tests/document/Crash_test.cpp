// Saving that ends by force: at whatever step, the old or the new file is there, whole.
#include "FailingFiles.h"
#include "document/CZDMPlainObject.h"
#include "tests/support/EveryClass.h"
#include "tests/support/TempFile.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <numeric>
#include <random>
#include <string>

using namespace zdm::test;

namespace {

/// Records in several streams.
ZRefPtr<CZDocument> LargeDocument() {
  auto document = DocumentOfEveryClass();
  const std::basic_string<OLECHAR> name(4000, OLECHAR{'x'});
  for (int i = 0; i < 600; ++i) {
    auto object = zdm::MakeObject<IZDMObject, CZDMPlainObject>();
    object->SetName(name.c_str());
    document->AddTail(object);
  }
  return document;
}

/// A saved document, and that document changed.
struct Change {
  explicit Change(ZRefPtr<CZDocument> saved) : document(std::move(saved)) {
    document->SaveAs(path);
    before = FileBytes(path);
    document->AddTail(zdm::MakeObject<IZDMObject, CZDMPlainObject>());
    document->SetName(OLESTR("changed"));
    ArmFiles(FileFault::kNone, -1);
    document->Save();
    steps = DisarmFiles();
    after = FileBytes(path);
  }

  /// Saves the changed document over the other one in a process that ends before step `step`.
  bool SaveAndDie(int step) const {
    WriteFileBytes(path, before);
    const pid_t child = fork();
    if (child == 0) {
      ArmFiles(FileFault::kKills, step);
      document->Save();
      _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
  }

  std::filesystem::path path = TempFile("crash.zdm");
  ZRefPtr<CZDocument> document;
  std::vector<BYTE> before;
  std::vector<BYTE> after;
  std::string steps;
};

/// @param count  of the steps tried, by chance; the last ones, about the rename, always.
void Crash(const Change& change, std::size_t count) {
  std::vector<int> steps(change.steps.size());
  std::iota(steps.begin(), steps.end(), 0);
  std::shuffle(steps.begin(), steps.end() - 4, std::mt19937(5));
  steps.erase(steps.begin(),
              steps.end() - static_cast<std::ptrdiff_t>(std::min(count, steps.size())));
  std::size_t isNew = 0;
  for (const int step : steps) {
    ASSERT_TRUE(change.SaveAndDie(step)) << step;
    const auto left = FileBytes(change.path);
    ASSERT_TRUE(left == change.before || left == change.after) << step;
    isNew += left == change.after ? 1 : 0;
    EXPECT_NO_THROW(CZDocument::Open(change.path)) << step;
  }
  EXPECT_EQ(isNew, 1u) << "only the flush of the folder comes after the new file is in place";
  std::printf("killed at %zu of %zu steps\n", steps.size(), change.steps.size());
}

TEST(DocumentCrash, OfASmallDocumentLeavesTheOldOneOrTheNewOne) {
  Crash(Change(DocumentOfEveryClass()), SIZE_MAX);
}

TEST(DocumentCrash, OfALargeDocumentLeavesTheOldOneOrTheNewOne) {
  Crash(Change(LargeDocument()), 200);
}

/// What is killed leaves what the system was given; a power cut leaves what was flushed.
TEST(DocumentCrash, TheFileIsOnTheDiskBeforeItsNameAndTheNameBeforeSavingReturns) {
  const std::string steps = Change(DocumentOfEveryClass()).steps;
  EXPECT_EQ(steps.substr(steps.find_last_of("wf") + 1), "scrs") << steps;
}

}  // namespace
