#include "document/SalvageLedger.h"

#include <algorithm>
#include <cstdio>

namespace zdm {

namespace {

constexpr const char* kStages[] = {"sound", "streams", "container", "bytes"};
constexpr const char* kFates[] = {"recovered", "absent-class", "doubtful", "lost"};
constexpr const char* kStates[] = {"sound", "mended", "unchecked", "lost"};
constexpr const char* kKinds[] = {"unknown", "container", "tables", "records", "free", "damaged"};

template <class Enum, std::size_t n>
const char* NameOf(const char* const (&names)[n], Enum value) {
  return names[static_cast<std::size_t>(value)];
}

std::string Quoted(const std::string& text) { return '"' + text + '"'; }

std::string TextOf(const GUID& id) {
  char text[40];
  std::snprintf(text, sizeof(text), "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}",
                static_cast<unsigned>(id.Data1), id.Data2, id.Data3, id.Data4[0], id.Data4[1],
                id.Data4[2], id.Data4[3], id.Data4[4], id.Data4[5], id.Data4[6], id.Data4[7]);
  return text;
}

std::string JsonOf(const SalvagedObject& object) {
  std::string text =
      "{\"id\":" + std::to_string(object.id) + ",\"fate\":" + Quoted(NameOf(kFates, object.fate));
  if (object.isMended) text += ",\"mended\":true";
  if (object.isUnchecked) text += ",\"unchecked\":true";
  if (object.isOwnerless) text += ",\"ownerless\":true";
  if (object.fate != ObjectFate::kLost) {
    text += ",\"owner\":" + std::to_string(object.ownerId) +
            ",\"class\":" + Quoted(TextOf(object.classId)) +
            ",\"at\":" + std::to_string(object.place) +
            ",\"length\":" + std::to_string(object.length);
  }
  return text + '}';
}

template <class T, class Write>
std::string Listed(const std::vector<T>& all, Write write) {
  std::string text = "[";
  for (const T& one : all) {
    if (text.size() > 1) text += ',';
    text += '\n' + write(one);
  }
  return text + ']';
}

}  // namespace

std::size_t SalvageLedger::Count(ObjectFate fate) const {
  return static_cast<std::size_t>(std::ranges::count(objects, fate, &SalvagedObject::fate));
}

std::size_t SalvageLedger::CountOwnerless() const {
  return static_cast<std::size_t>(std::ranges::count(objects, true, &SalvagedObject::isOwnerless));
}

/// Its texts are the words above and hold nothing that would have to be escaped.
std::string SalvageLedger::ToJson() const {
  std::string text = "{\"stage\":" + Quoted(NameOf(kStages, stage)) +
                     ",\"container\":" + Quoted(containerFault) +
                     ",\"size\":" + std::to_string(fileSize);
  text += ",\"counts\":{";
  for (std::size_t fate = 0; fate < std::size(kFates); ++fate) {
    text += Quoted(kFates[fate]) + ':' + std::to_string(Count(static_cast<ObjectFate>(fate))) + ',';
  }
  text += "\"ownerless\":" + std::to_string(CountOwnerless()) + '}';
  text += ",\"tables\":" + Listed(tables, [](const SalvagedTable& table) {
            return "{\"name\":" + Quoted(table.name) +
                   ",\"state\":" + Quoted(NameOf(kStates, table.state)) + '}';
          });
  text += ",\"objects\":" + Listed(objects, JsonOf);
  text += ",\"ranges\":" + Listed(ranges, [](const FileRange& range) {
            return "{\"from\":" + std::to_string(range.begin) +
                   ",\"to\":" + std::to_string(range.end) +
                   ",\"kind\":" + Quoted(NameOf(kKinds, range.kind)) + '}';
          });
  return text + "}\n";
}

}  // namespace zdm
