#include "document/Meaning.h"
#include "tools/zdm/Commands.h"
#include "tools/zdm/Describe.h"
#include "tools/zdm/OpenDocument.h"
#include "zdm/identity/OID.h"

#include <map>
#include <memory>
#include <unordered_set>

namespace zdm::tool {

namespace {

struct Options {
  std::string first;
  std::string second;
};

struct Pair {
  IZDMObject* first;
  IZDMObject* second;
};

bool IsShown(const OID* oid) { return oid->Object != nullptr && oid->JudgeStatus(ZOS_VALID); }

class Comparison {
 public:
  Comparison(const Document& first, const Document& second) : first_(first), second_(second) {
    const Meanings meanings(*second.Get());
    std::unordered_set<const IZDMObject*> taken = {second.Get()};
    pairs_.push_back({first.Get(), second.Get()});
    for (const OID* oid : first->GetOIDManager()->GetOIDs()) {
      if (!IsShown(oid)) continue;
      IZDMObject* counterpart = CounterpartOf(*oid, meanings);
      if (counterpart == nullptr || !taken.insert(counterpart).second) {
        onlyInFirst_.push_back(oid);
        continue;
      }
      pairs_.push_back({oid->Object, counterpart});
      const LONG id = counterpart->GetOID()->ID;
      if (id != oid->ID) firstIDs_[id] = oid->ID;
    }
    for (const OID* oid : second->GetOIDManager()->GetOIDs()) {
      if (IsShown(oid) && !taken.contains(oid->Object)) onlyInSecond_.push_back(oid);
    }
  }

  /// With the fields that differ, each as it is in both.
  Json Describe() const {
    Json different = Json::array();
    for (const Pair& pair : pairs_) {
      Json fields = DifferentFields(pair);
      if (fields.empty()) continue;
      Json row = Brief(*pair.first->GetOID());
      row["fields"] = std::move(fields);
      different.push_back(std::move(row));
    }
    Json onlyInFirst = Json::array();
    for (const OID* oid : onlyInFirst_) onlyInFirst.push_back(Brief(*oid));
    Json onlyInSecond = Json::array();
    for (const OID* oid : onlyInSecond_) onlyInSecond.push_back(Brief(*oid));
    return {{"same", different.empty() && onlyInFirst.empty() && onlyInSecond.empty()},
            {"onlyInFirst", std::move(onlyInFirst)},
            {"onlyInSecond", std::move(onlyInSecond)},
            {"different", std::move(different)}};
  }

 private:
  /// What means the same, whatever its ID; else what has the same ID.
  IZDMObject* CounterpartOf(const OID& oid, const Meanings& meanings) const {
    IZDMObject* sameID = second_.Find(oid.ID);
    const std::string meaning = MeaningOf(*oid.Object);
    if (sameID != nullptr && MeaningOf(*sameID) == meaning) return sameID;
    const OID* other = meanings.Find(oid.Object);
    return other != nullptr ? other->Object : nullptr;
  }

  Json DifferentFields(const Pair& pair) const {
    const Json before = Fields(*first_.Get(), *pair.first);
    const Json after = Fields(*second_.Get(), *pair.second);
    Json different = Json::array();
    for (const auto& [key, value] : after.items()) {
      // Of a record that holds other IDs for the same objects the checksum says nothing.
      if (key == "status" || (key == "record" && !firstIDs_.empty())) continue;
      const Json former = before.contains(key) ? before[key] : Json();
      if (former == (key == "id" ? value : WithFirstIDs(key, value))) continue;
      different.push_back({{"field", key}, {"first", former}, {"second", value}});
    }
    return different;
  }

  /// IDs of the second document by those of the first.
  Json WithFirstIDs(const std::string& key, const Json& value) const {
    static const std::unordered_set<std::string> kIDs = {"owner", "current", "holds", "targets"};
    if (firstIDs_.empty()) return value;
    if (value.is_array() || value.is_object()) {
      Json result = value;
      for (auto& [inner, element] : result.items()) {
        element = WithFirstIDs(value.is_array() ? key : inner, element);
      }
      return result;
    }
    if (!kIDs.contains(key) || !value.is_number_integer()) return value;
    const auto found = firstIDs_.find(value.get<LONG>());
    return found != firstIDs_.end() ? Json(found->second) : value;
  }

  const Document& first_;
  const Document& second_;
  std::vector<Pair> pairs_;
  std::vector<const OID*> onlyInFirst_;
  std::vector<const OID*> onlyInSecond_;
  std::map<LONG, LONG> firstIDs_;  // where the two differ
};

std::string LineOf(const Json& brief) {
  std::string line = Painted(Colour::kCyan, std::to_string(brief["id"].get<LONG>()));
  if (!brief["name"].is_null()) line += ' ' + Quoted(brief["name"].get<std::string>());
  return line + ' ' + Painted(Colour::kDim, brief["class"].get<std::string>());
}

void PrintDifferences(const Json& differences) {
  for (const Json& brief : differences["onlyInFirst"]) {
    PrintLine(Painted(Colour::kRed, "-") + ' ' + LineOf(brief));
  }
  for (const Json& brief : differences["onlyInSecond"]) {
    PrintLine(Painted(Colour::kYellow, "+") + ' ' + LineOf(brief));
  }
  for (const Json& row : differences["different"]) {
    PrintLine("~ " + LineOf(row));
    for (const Json& field : row["fields"]) {
      const std::string key = field["field"].get<std::string>();
      for (const auto& [sign, side] : {std::pair("  - ", "first"), {"  + ", "second"}}) {
        for (const std::string& line : Lines(Json{{key, field[side]}})) PrintLine(sign + line);
      }
    }
  }
}

void CompareDocuments(Context& context, const Options& options) {
  const Document first = Open(options.first);
  const Document second = Open(options.second);
  const Json differences = Comparison(first, second).Describe();
  if (!differences["same"].get<bool>()) context.exitCode = kDifferent;
  if (context.json) return PrintJson(differences);
  PrintDifferences(differences);
}

}  // namespace

void AddDiff(CLI::App& app, Context& context) {
  auto options = std::make_shared<Options>();
  Command command(app, "diff", "Compare two documents object by object");
  command.Argument("FIRST", options->first, "A document");
  command.Argument("SECOND", options->second, "The document to compare with it");
  command.Footer(
      "Objects are paired by ID; categories by number, definitions by GUID and materials by name,\n"
      "whatever their IDs. Prints - for what is only in FIRST, + for what is only in SECOND, and ~\n"
      "for what differs, with the fields that do. Ends with 13 when anything differs.\n"
      "Example:\n"
      "  zdm diff before.zdm after.zdm");
  command.Run([&context, options] { CompareDocuments(context, *options); });
}

}  // namespace zdm::tool
