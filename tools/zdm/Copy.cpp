#include "tools/zdm/Commands.h"
#include "tools/zdm/Describe.h"
#include "tools/zdm/OpenDocument.h"
#include "zdm/identity/OID.h"

#include <memory>
#include <optional>

namespace zdm::tool {

namespace {

struct Options {
  std::string file;
  std::vector<LONG> ids;
  std::string other;
  LONG manager = kRootID;
};

const char* CodeOf(CopyObstacle why) {
  switch (why) {
    case CopyObstacle::kNotInDocument:
      return "not-in-document";
    case CopyObstacle::kDocument:
      return "document";
    case CopyObstacle::kNotValid:
      return "not-valid";
    case CopyObstacle::kNoOwner:
      return "no-manager";
    case CopyObstacle::kNotAvailable:
      break;
  }
  return "class-not-available";
}

const char* CodeOf(ReferenceFate fate) {
  switch (fate) {
    case ReferenceFate::kKept:
      return "kept";
    case ReferenceFate::kCounterpart:
      return "counterpart";
    case ReferenceFate::kCut:
      break;
  }
  return "cut";
}

const char* PhraseOf(ReferenceFate fate) {
  switch (fate) {
    case ReferenceFate::kKept:
      return "still refers to ";
    case ReferenceFate::kCounterpart:
      return "refers to the counterpart of ";
    case ReferenceFate::kCut:
      break;
  }
  return "no longer refers to ";
}

Json Described(const Copies& copies) {
  Json objects = Json::array();
  for (const auto& [original, copy] : copies.objects) {
    objects.push_back({{"original", original->GetOID()->ID}, {"copy", copy->GetOID()->ID}});
  }
  Json leftOut = Json::array();
  for (const auto& [object, why] : copies.leftOut) {
    leftOut.push_back({{"object", object->GetOID()->ID}, {"why", CodeOf(why)}});
  }
  Json references = Json::array();
  for (const auto& [from, to, via, fate] : copies.leadingOut) {
    references.push_back({{"from", from->GetOID()->ID},
                          {"to", to->ID},
                          {"via", TextOf(via)},
                          {"fate", CodeOf(fate)}});
  }
  return {{"copies", std::move(objects)},
          {"leftOut", std::move(leftOut)},
          {"references", std::move(references)}};
}

void PrintCopies(const Copies& copies) {
  for (const auto& [original, copy] : copies.objects) {
    PrintLine("copied " + BriefLine(*original->GetOID()) + " as " +
              std::to_string(copy->GetOID()->ID));
  }
  for (const auto& [object, why] : copies.leftOut) {
    PrintLine(Painted(Colour::kRed, "not copied") + ": " + BriefLine(*object->GetOID()) + ", " +
              CodeOf(why));
  }
  for (const auto& [from, to, via, fate] : copies.leadingOut) {
    const Colour colour = fate == ReferenceFate::kCut ? Colour::kYellow : Colour::kPlain;
    PrintLine(Painted(colour, std::string(CodeOf(fate))) + ": the copy of " +
              BriefLine(*from->GetOID()) + ' ' + PhraseOf(fate) + std::to_string(to->ID) +
              " through " + TextOf(via));
  }
}

void CopyObjects(Context& context, const Options& options) {
  Document document = Open(options.file);
  std::optional<Document> other;
  if (!options.other.empty()) other = Open(options.other);
  if (!other && options.manager != kRootID) {
    throw Failure(kUsage, "--in names a manager of the document after --to");
  }
  std::vector<IZDMObject*> objects;
  for (const LONG id : options.ids) {
    if (id == kRootID) throw Failure(kRefused, "the document itself is not copied");
    objects.push_back(Require(document, id));
  }
  IZDMObjMgr* manager =
      other ? ViewAs<IZDMObjMgr>(Require(*other, options.manager)) : document.Get();
  if (manager == nullptr) {
    throw Failure(kRefused, "object " + std::to_string(options.manager) + " is no manager");
  }
  const Copies copies =
      other ? document.CopyTo(*other, objects, manager) : document.Copy(objects);
  if (copies.objects.empty()) {
    context.exitCode = kRefused;
  } else {
    Save(other ? *other : document);
  }
  if (context.json) return PrintJson(Described(copies));
  PrintCopies(copies);
}

}  // namespace

void AddCopy(CLI::App& app, Context& context) {
  auto options = std::make_shared<Options>();
  Command command(app, "copy", "Copy objects, managers with all they hold");
  command.Argument("FILE", options->file, "The document");
  command.Argument("ID", options->ids, "The objects");
  command.Option("--to", options->other, "The document to copy to; FILE without it");
  command.Option("--in", options->manager, "ID of the manager there; the document without it");
  command.Footer(
      "Copies refer to each other as the objects do. Names what became of every reference to\n"
      "something else: kept, led to its counterpart in the other document, or cut.\n"
      "Ends with 11 when nothing could be copied.\n"
      "Examples:\n"
      "  zdm copy house.zdm 2 3\n"
      "  zdm copy house.zdm 2 3 --to garden.zdm --in 1");
  command.Run([&context, options] { CopyObjects(context, *options); });
}

}  // namespace zdm::tool
