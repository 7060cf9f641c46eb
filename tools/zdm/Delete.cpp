#include "tools/zdm/Commands.h"
#include "tools/zdm/Describe.h"
#include "tools/zdm/OpenDocument.h"
#include "zdm/identity/OID.h"

#include <memory>

namespace zdm::tool {

namespace {

struct Options {
  std::string file;
  std::vector<LONG> ids;
  bool dryRun = false;
};

const char* PhraseOf(DeletionObstacle why) {
  switch (why) {
    case DeletionObstacle::kHardID:
      return "belongs to the document";
    case DeletionObstacle::kCurrent:
      return "is the current object of";
    case DeletionObstacle::kReferred:
      break;
  }
  return "is referred to by";
}

const char* CodeOf(DeletionObstacle why) {
  switch (why) {
    case DeletionObstacle::kHardID:
      return "hard-id";
    case DeletionObstacle::kCurrent:
      return "current";
    case DeletionObstacle::kReferred:
      break;
  }
  return "referred";
}

Json Described(const Deletion& plan, bool isDeleted) {
  Json objects = Json::array();
  for (IZDMObject* object : plan.objects) objects.push_back(object->GetOID()->ID);
  Json obstacles = Json::array();
  for (const Obstacle& obstacle : plan.obstacles) {
    obstacles.push_back(
        {{"object", obstacle.object->GetOID()->ID},
         {"why", CodeOf(obstacle.why)},
         {"by", obstacle.by != nullptr ? Json(obstacle.by->GetOID()->ID) : Json()}});
  }
  Json dangling = Json::array();
  for (const Reference& reference : plan.dangling) {
    dangling.push_back({{"from", reference.from->GetOID()->ID},
                        {"to", reference.to->ID},
                        {"via", NameOf(reference.via)}});
  }
  Json losing = Json::array();
  for (IZDMObjMgr* manager : plan.losing) losing.push_back(manager->GetOID()->ID);
  return {{"deleted", isDeleted},
          {"objects", std::move(objects)},
          {"obstacles", std::move(obstacles)},
          {"dangling", std::move(dangling)},
          {"withoutCurrent", std::move(losing)}};
}

void PrintPlan(const Deletion& plan) {
  for (const Obstacle& obstacle : plan.obstacles) {
    std::string line = Painted(Colour::kRed, "in the way") + ": " +
                       BriefLine(*obstacle.object->GetOID()) + ' ' + PhraseOf(obstacle.why);
    if (obstacle.by != nullptr) line += ' ' + BriefLine(*obstacle.by->GetOID());
    PrintLine(line);
  }
  for (const Reference& reference : plan.dangling) {
    PrintLine(Painted(Colour::kYellow, "will refer to nothing") + ": " +
              BriefLine(*reference.from->GetOID()) + " through " + NameOf(reference.via) + " to " +
              std::to_string(reference.to->ID));
  }
  for (IZDMObjMgr* manager : plan.losing) {
    PrintLine(Painted(Colour::kYellow, "will have no current object") + ": " +
              BriefLine(*manager->GetOID()));
  }
}

void DeleteObjects(Context& context, const Options& options) {
  Document document = Open(options.file);
  std::vector<IZDMObject*> objects;
  for (const LONG id : options.ids) {
    if (id == kRootID) throw Failure(kRefused, "the document itself is not deleted");
    objects.push_back(Require(document, id));
  }
  const Deletion plan = PlanDeletion(*document.Get(), objects);
  const bool isPossible = plan.obstacles.empty();
  const bool isDeleted = isPossible && !options.dryRun;
  const std::size_t count = plan.objects.size();
  const Json description = Described(plan, isDeleted);
  if (!context.json) PrintPlan(plan);
  if (!isPossible) context.exitCode = kRefused;
  if (isDeleted) {
    CarryOut(*document.Get(), plan);
    Save(document);
  }
  if (context.json) return PrintJson(description);
  PrintLine((isDeleted    ? "deleted "
             : isPossible ? "would delete "
                          : "not deleted: ") +
            std::to_string(count) + (count == 1 ? " object" : " objects"));
}

}  // namespace

void AddDelete(CLI::App& app, Context& context) {
  auto options = std::make_shared<Options>();
  Command command(app, "delete",
                  "Delete objects, managers with all they hold, unless something is in the way");
  command.Argument("FILE", options->file, "The document");
  command.Argument("ID", options->ids, "The objects");
  command.Flag("--dry-run", options->dryRun, "Only name what would happen");
  command.Footer(
      "Names what is in the way and what will refer to nothing, before anything is deleted.\n"
      "Ends with 11 when something is in the way; then nothing is deleted.\n"
      "Examples:\n"
      "  zdm delete house.zdm 2 --dry-run\n"
      "  zdm delete house.zdm 2 3");
  command.Run([&context, options] { DeleteObjects(context, *options); });
}

}  // namespace zdm::tool
