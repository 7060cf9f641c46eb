// Documents without memory, and on disks that fail: each operation is tried with its first
// allocation, or file operation, failing, then with its second, and so on. Whatever fails says so,
// leaves the files alone, can be repeated, and leaves nothing behind (the leak checker tells).
#include "FailingFiles.h"
#include "document/Audit.h"
#include "document/DocumentError.h"
#include "document/Salvage.h"
#include "platform/ole/CAtlException.h"
#include "tests/platform/ole/FailingAllocator.h"
#include "tests/support/EveryClass.h"
#include "tests/support/TempFile.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
#include <functional>
#include <new>
#include <optional>
#include <string>

using namespace zdm::test;
using zdm::DocumentFault;

namespace {

using Bytes = std::vector<BYTE>;
using Outcome = std::optional<DocumentFault>;  // nothing for success

Outcome OutcomeOf(const std::function<void()>& run) {
  try {
    run();
    return std::nullopt;
  } catch (const zdm::DocumentError& error) {
    return error.Fault();
  } catch (const CAtlException& error) {
    return error.m_hr == E_OUTOFMEMORY ? DocumentFault::kNoMemory : DocumentFault::kFailed;
  } catch (const std::bad_alloc&) {
    return DocumentFault::kNoMemory;
  }
}

class DocumentFaults : public testing::Test {
 protected:
  struct Operation {
    const char* name;
    std::function<void()> run;
    std::function<Bytes()> result;  // what came of it, alike each time
    bool isTolerant = false;        // goes on without what cannot be read
  };

  DocumentFaults() {
    document_->SaveAs(path_);
    old_ = FileBytes(path_);
    damaged_ = old_;
    for (std::size_t i = 1024; i < 1536; ++i) damaged_[i] = 0;
    document_->SetName(OLESTR("changed"));
  }

  Bytes SavedBytes(CZDocument& document) {
    const auto path = TempFile("result.zdm");
    document.SaveAs(path);
    Bytes bytes = FileBytes(path);
    std::filesystem::remove(path);
    return bytes;
  }

  Bytes Audited() const {
    Bytes text;
    for (const zdm::Finding& finding : findings_) {
      for (const char c : std::string(zdm::NameOf(finding.code)) + finding.place) {
        text.push_back(static_cast<BYTE>(c));
      }
    }
    return text;
  }

  const std::vector<Operation> operations_ = {
      {"open", [this] { opened_ = CZDocument::Open(path_); },
       [this] { return SavedBytes(*opened_); }},
      {"save", [this] { document_->SaveAs(path_); }, [this] { return FileBytes(path_); }},
      {"recover what is sound", [this] { salvaged_ = zdm::Salvage(path_); },
       [this] { return SavedBytes(*salvaged_.document); }, true},
      {"recover what is damaged", [this] { salvaged_ = zdm::Salvage(damagedPath_); },
       [this] { return SavedBytes(*salvaged_.document); }, true},
      {"audit", [this] { findings_ = zdm::Audit(*document_); }, [this] { return Audited(); }}};

  /// Tries the operation with a fault at each step.
  /// @param faulty  runs it so; false once there are no more steps.
  void TryEach(const Operation& operation,
               const std::function<bool(int step, Outcome* outcome)>& faulty) {
    Restore();
    operation.run();
    const Bytes expected = operation.result();
    const auto saved = FileBytes(path_);
    const auto files = FileCount();
    for (int step = 0;; ++step) {
      SCOPED_TRACE(std::string(operation.name) + ", step " + std::to_string(step));
      Restore();
      Outcome outcome;
      if (!faulty(step, &outcome)) {
        std::printf("%s: %d steps\n", operation.name, step);
        return;
      }
      EXPECT_TRUE(outcome || operation.isTolerant || operation.result() == expected);
      const Bytes left = FileBytes(path_);
      EXPECT_TRUE(left == old_ || (left == saved && isRenamed_));
      EXPECT_EQ(FileBytes(damagedPath_), damaged_);
      EXPECT_EQ(FileCount(), files);
      ASSERT_FALSE(HasFailure());
    }
  }

  void Restore() {
    WriteFileBytes(path_, old_);
    WriteFileBytes(damagedPath_, damaged_);
    opened_ = nullptr;
    salvaged_ = {};
    findings_.clear();
    isRenamed_ = false;
  }

  std::ptrdiff_t FileCount() const {
    return std::distance(std::filesystem::directory_iterator(path_.parent_path()), {});
  }

  const std::filesystem::path path_ = TempFile("faults.zdm");
  const std::filesystem::path damagedPath_ = TempFile("damaged.zdm");
  ZRefPtr<CZDocument> document_ = DocumentOfEveryClass();
  Bytes old_;
  Bytes damaged_;
  ZRefPtr<CZDocument> opened_;
  zdm::Salvaged salvaged_;
  std::vector<zdm::Finding> findings_;
  bool isRenamed_ = false;
};

TEST_F(DocumentFaults, OfMemoryAreToldAndNothingIsHalfDone) {
  for (const Operation& operation : operations_) {
    TryEach(operation, [&](int step, Outcome* outcome) {
      bool isOver = false;
      *outcome = WithAllocations(step, [&] {
        const Outcome result = OutcomeOf(operation.run);
        isOver = allocationsLeft > 0;
        return result;
      });
      EXPECT_EQ(outcome->value_or(DocumentFault::kNoMemory), DocumentFault::kNoMemory);
      isRenamed_ = !*outcome;
      return !isOver;
    });
    ASSERT_FALSE(HasFailure());
  }
}

TEST_F(DocumentFaults, OfTheDiskAreToldAndTheFileStays) {
  const struct {
    FileFault fault;
    int error;
    DocumentFault outcome;  // of saving
  } rows[] = {{FileFault::kFails, ENOSPC, DocumentFault::kNoRoom},
              {FileFault::kShort, ENOSPC, DocumentFault::kNoRoom},
              {FileFault::kFails, EIO, DocumentFault::kFailed}};
  for (const auto& row : rows) {
    for (const Operation& operation : operations_) {
      TryEach(operation, [&](int step, Outcome* outcome) {
        ArmFiles(row.fault, step, row.error);
        *outcome = OutcomeOf(operation.run);
        const std::string steps = DisarmFiles();
        isRenamed_ = steps.find('r') < static_cast<std::size_t>(step) || !*outcome;
        if (steps.size() <= static_cast<std::size_t>(step)) return false;
        const char met = steps[static_cast<std::size_t>(step)];
        const bool isHarmless = row.fault == FileFault::kShort && met != 'w';
        EXPECT_TRUE(operation.isTolerant || isHarmless != outcome->has_value()) << met;
        EXPECT_EQ(met != 'i' && *outcome ? **outcome : row.outcome, row.outcome) << met;
        return true;
      });
      ASSERT_FALSE(HasFailure());
    }
  }
}

}  // namespace
