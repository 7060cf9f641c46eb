#include "tools/zdm/Commands.h"
#include "tools/zdm/Describe.h"
#include "tools/zdm/OpenDocument.h"
#include "tools/zdm/TreePaths.h"
#include "zdm/identity/OID.h"

#include <memory>

namespace zdm::tool {

namespace {

constexpr std::size_t kDeepest = 60;  // levels that are drawn; below, their number is told

/// One line an object, managers above what they hold.
class TreePrinter {
 public:
  explicit TreePrinter(bool json) : json_(json) {}

  /// Managers nest as deep as a file says, so levels are a vector and not calls.
  void Print(IZDMObject* root) {
    levels_.clear();
    PrintObject(*root, "");
    Enter(root);
    while (!levels_.empty()) {
      IZDMObjMgr* manager = levels_.back().manager;
      LONGLONG& next = levels_.back().next;
      if (next == 0) {
        levels_.pop_back();
        continue;
      }
      IZDMObject* object = manager->GetNext(next);
      if (object == nullptr) continue;
      PrintObject(*object, next != 0 ? "├─ " : "└─ ");
      Enter(object);
    }
  }
  void Finish() const {
    if (json_) PrintJson(rows_);
  }

 private:
  struct Level {
    IZDMObjMgr* manager;
    LONGLONG next;  // position; 0 past the last
  };

  void Enter(IZDMObject* object) {
    auto* manager = ViewAs<IZDMObjMgr>(object);
    if (manager != nullptr) levels_.push_back({manager, manager->GetHeadPosition()});
  }

  void PrintObject(IZDMObject& object, const char* branch) {
    if (json_) {
      Json row = Brief(*object.GetOID());
      row["owner"] = static_cast<LONG>(object.GetOwnerID());
      row["depth"] = levels_.size();
      rows_.push_back(std::move(row));
      return;
    }
    std::string line;
    for (std::size_t i = 0; i + 1 < levels_.size() && i < kDeepest; ++i) {
      line += levels_[i].next != 0 ? "│  " : "   ";
    }
    if (levels_.size() > kDeepest + 1) line += "[level " + std::to_string(levels_.size()) + "] ";
    PrintLine(line + branch + BriefLine(*object.GetOID()));
  }

  bool json_;
  Json rows_ = Json::array();
  std::vector<Level> levels_;
};

struct Options {
  std::string file;
  bool hasPaths = false;
};

void PrintTree(const Context& context, const Options& options) {
  const Document document = Open(options.file);
  if (options.hasPaths) return PrintPaths(context, document);
  TreePrinter printer(context.json);
  printer.Print(Require(document, kRootID));
  const auto& strays = document->GetStrays();
  if (!strays.empty() && !context.json) PrintLine("in no manager:");
  for (const auto& stray : strays) printer.Print(stray);
  printer.Finish();
}

}  // namespace

void AddTree(CLI::App& app, Context& context) {
  auto options = std::make_shared<Options>();
  Command command(app, "tree", "The objects, below the managers that hold them");
  command.Argument("FILE", options->file, "The document");
  command.Flag("--paths", options->hasPaths, "The pooled paths of nested references instead");
  command.Footer("Example:\n  zdm tree house.zdm");
  command.Run([&context, options] { PrintTree(context, *options); });
}

}  // namespace zdm::tool
