#include "tools/zdm/Commands.h"
#include "tools/zdm/Describe.h"
#include "tools/zdm/OpenDocument.h"
#include "tools/zdm/Terminal.h"
#include "zdm/identity/OID.h"

#include <map>
#include <memory>
#include <optional>

namespace zdm::tool {

namespace {

struct Options {
  std::string file;
  std::optional<LONG> id;
  bool dot = false;
};

/// The references of all objects in the order of the ID table, the document's last; or those around
/// one object.
std::vector<Reference> Edges(const Document& document, IZDMObject* centre) {
  if (centre != nullptr) {
    std::vector<Reference> edges = document.ReferencesTo(centre);
    for (const Reference& each : document.ReferencesOf(centre)) {
      if (each.to != centre->GetOID()) edges.push_back(each);
    }
    return edges;
  }
  std::vector<Reference> edges;
  const auto append = [&](IZDMObject* object) {
    const std::vector<Reference> more = document.ReferencesOf(object);
    edges.insert(edges.end(), more.begin(), more.end());
  };
  for (const OID* oid : document->GetOIDManager()->GetOIDs()) {
    if (oid->Object != nullptr && oid->JudgeStatus(ZOS_VALID)) append(oid->Object);
  }
  append(Require(document, kRootID));
  return edges;
}

/// By ID: those at the ends of edges; without a centre all objects.
std::map<LONG, const OID*> Nodes(const Document& document, const std::vector<Reference>& edges,
                                 IZDMObject* centre) {
  std::map<LONG, const OID*> nodes;
  const auto add = [&](const OID* oid) { nodes.emplace(oid->ID, oid); };
  for (const Reference& edge : edges) {
    add(edge.from->GetOID());
    add(edge.to);
  }
  if (centre != nullptr) {
    add(centre->GetOID());
    return nodes;
  }
  for (const OID* oid : document->GetOIDManager()->GetOIDs()) {
    if (oid->Object != nullptr && oid->JudgeStatus(ZOS_VALID)) add(oid);
  }
  return nodes;
}

/// Diffusible ones are drawn through, others are not.
bool IsDiffusible(const Reference& edge) {
  return edge.relation != nullptr && edge.relation->IsReltnDiffusible();
}

/// A quoted string of DOT. Escapes of the label stay text, line ends are ours.
std::string DotText(const std::string& text) {
  std::string quoted;
  for (const char c : Escaped(text)) {
    if (c == '"' || c == '\\') quoted += '\\';
    quoted += c;
  }
  return quoted;
}

std::string DotOf(const std::map<LONG, const OID*>& nodes, const std::vector<Reference>& edges,
                  IZDMObject* centre) {
  std::string dot =
      "digraph document {\n"
      "  graph [rankdir=LR]\n"
      "  node [shape=box, fontname=\"sans-serif\", fontsize=10]\n"
      "  edge [fontname=\"sans-serif\", fontsize=9]\n";
  for (const auto& [id, oid] : nodes) {
    std::string label = std::to_string(id);
    if (oid->Object != nullptr) {
      const Json name = NameOf(*oid->Object);
      if (!name.is_null()) label += ' ' + DotText(name.get<std::string>());
      label += "\\n" + DotText(ClassOf(*oid->Object));
    }
    dot += "  \"" + std::to_string(id) + "\" [label=\"" + label + '"';
    if (oid->Object == nullptr) dot += ", style=dashed";
    if (centre != nullptr && oid == centre->GetOID()) dot += ", penwidth=2";
    dot += "]\n";
  }
  for (const Reference& edge : edges) {
    dot += "  \"" + std::to_string(edge.from->GetOID()->ID) + "\" -> \"" +
           std::to_string(edge.to->ID) + "\" [style=" + (IsDiffusible(edge) ? "solid" : "dashed");
    if (edge.via != ReferenceVia::kRelation) dot += std::string(", label=") + NameOf(edge.via);
    dot += "]\n";
  }
  return dot + "}\n";
}

Json JsonOf(const std::map<LONG, const OID*>& nodes, const std::vector<Reference>& edges) {
  Json json = {{"nodes", Json::array()}, {"edges", Json::array()}};
  for (const auto& [id, oid] : nodes) json["nodes"].push_back(Brief(*oid));
  for (const Reference& edge : edges) {
    json["edges"].push_back({{"from", edge.from->GetOID()->ID},
                             {"to", edge.to->ID},
                             {"via", NameOf(edge.via)},
                             {"diffusible", IsDiffusible(edge)}});
  }
  return json;
}

void PrintGraph(const Context& context, const Options& options) {
  const Document document = Open(options.file);
  IZDMObject* centre = options.id ? Require(document, *options.id) : nullptr;
  const std::vector<Reference> edges = Edges(document, centre);
  const auto nodes = Nodes(document, edges, centre);
  if (context.json) return PrintJson(JsonOf(nodes, edges));
  const std::string dot = DotOf(nodes, edges, centre);
  const bool isInstalled = IsInstalled("dot");
  if (options.dot || !isInstalled) {
    if (!options.dot) PrintError("dot (Graphviz) is not installed: this is its input");
    std::fwrite(dot.data(), 1, dot.size(), stdout);
  } else if (!Pipe("dot -Tsvg", dot)) {
    throw Failure(kFailed, "dot could not draw the graph");
  }
}

}  // namespace

void AddGraph(CLI::App& app, Context& context) {
  auto options = std::make_shared<Options>();
  Command command(app, "graph", "The references of a document, or those around one object, as SVG");
  command.Argument("FILE", options->file, "The document");
  command.Argument("ID", options->id, "The object in the middle");
  command.Flag("--dot", options->dot, "Print DOT, the input of Graphviz");
  command.Footer(
      "Drawn by dot, a program of Graphviz; where it is missing DOT is printed.\n"
      "Solid lines are diffusible relations.\n"
      "Examples:\n"
      "  zdm graph house.zdm > house.svg\n"
      "  zdm graph house.zdm 2 --dot");
  command.Run([&context, options] { PrintGraph(context, *options); });
}

}  // namespace zdm::tool
