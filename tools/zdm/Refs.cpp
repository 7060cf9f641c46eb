#include "tools/zdm/Commands.h"
#include "tools/zdm/Describe.h"
#include "tools/zdm/OpenDocument.h"
#include "zdm/identity/OID.h"

#include <memory>

namespace zdm::tool {

namespace {

struct Options {
  std::string file;
  LONG id = 0;
};

Json Row(const OID& other, const Reference& reference) {
  Json row = Brief(other);
  row["via"] = NameOf(reference.via);
  IZRelation* relation = reference.relation;
  row["relation"] = relation != nullptr ? Json(relation->getZRClass()->GetName()) : Json();
  if (relation != nullptr) {
    row["tag"] = relation->GetReltnTag();
    row["diffusible"] = relation->IsReltnDiffusible();
  }
  return row;
}

std::string Line(const OID& other, const Reference& reference) {
  std::string line = "  " + BriefLine(other) + " through " + NameOf(reference.via);
  if (IZRelation* relation = reference.relation) {
    line += std::string(" ") + relation->getZRClass()->GetName();
    if (relation->IsReltnDiffusible()) line += ", diffusible";
  }
  return line;
}

void PrintReferences(const Context& context, const Options& options) {
  const Document document = Open(options.file);
  IZDMObject* object = Require(document, options.id);
  const std::vector<Reference> to = document.ReferencesTo(object);
  const std::vector<Reference> of = document.ReferencesOf(object);
  if (context.json) {
    Json json = Brief(*object->GetOID());
    Json& referredToBy = json["referredToBy"] = Json::array();
    for (const Reference& each : to) referredToBy.push_back(Row(*each.from->GetOID(), each));
    Json& refersTo = json["refersTo"] = Json::array();
    for (const Reference& each : of) refersTo.push_back(Row(*each.to, each));
    return PrintJson(json);
  }
  PrintLine(BriefLine(*object->GetOID()));
  PrintLine(to.empty() ? "referred to by nobody" : "referred to by");
  for (const Reference& each : to) PrintLine(Line(*each.from->GetOID(), each));
  PrintLine(of.empty() ? "refers to nothing" : "refers to");
  for (const Reference& each : of) PrintLine(Line(*each.to, each));
}

}  // namespace

void AddRefs(CLI::App& app, Context& context) {
  auto options = std::make_shared<Options>();
  Command command(app, "refs", "Who refers to an object, through what, and what it refers to");
  command.Argument("FILE", options->file, "The document");
  command.Argument("ID", options->id, "The object; -1 is the document");
  command.Footer("Example:\n  zdm refs house.zdm 2");
  command.Run([&context, options] { PrintReferences(context, *options); });
}

}  // namespace zdm::tool
