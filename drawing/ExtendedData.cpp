#include "drawing/ExtendedData.h"

#include "drawing/GroupCodes.h"
#include "drawing/Numbers.h"
#include "platform/ole/Bstr.h"
#include "zdm/extdata/CZExtDataObj.h"
#include "zdm/extdata/IZExtDataCollection.h"
#include "zdm/extdata/IZExtDataMgr.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/framework/QueryZInterface.h"
#include "zdm/model/IZDMObject.h"

#include <limits>
#include <tuple>
#include <variant>

namespace zdm {

namespace {

using Value = std::variant<WideString, double, SHORT, LONG>;

struct Item {
  LONG code;
  Value value;

  bool operator==(const Item&) const = default;
};

constexpr LONG kFirstReal = 1010;
constexpr LONG kFirstShort = 1060;
constexpr LONG kLongCode = 1071;

Item ItemOf(const Group& group, const TextCodec& codec) {
  if (group.code >= kFirstReal && group.code < kFirstShort) {
    if (const auto real = ParseReal(group.text)) return {group.code, *real};
  } else if (group.code >= kFirstShort && group.code <= kLongCode) {
    const auto number = ParseLong(group.text);
    if (number && group.code == kLongCode) return {group.code, *number};
    using Short = std::numeric_limits<SHORT>;
    if (number && *number >= Short::min() && *number <= Short::max()) {
      return {group.code, static_cast<SHORT>(*number)};
    }
  }
  return {group.code, codec.Show(group.text)};
}

ZRefPtr<IZExtDataAccess> MakeItem(const Item& item) {
  const auto made = MakeObject<IZExtDataAccess, CZExtDataObj>();
  const std::string digits = std::to_string(item.code);
  made->SetName(WideString(digits.begin(), digits.end()).c_str());
  if (const auto* text = std::get_if<WideString>(&item.value)) made->SetString(text->c_str());
  if (const auto* real = std::get_if<double>(&item.value)) made->SetDouble(*real);
  if (const auto* number = std::get_if<SHORT>(&item.value)) made->SetShort(*number);
  if (const auto* number = std::get_if<LONG>(&item.value)) made->SetLong(*number);
  return made;
}

/// False for an item that has no group: of another type, or not named by a code.
bool ReadItem(IZExtData& data, Item* item) {
  auto* access = ViewAs<IZExtDataAccess>(&data);
  Bstr name;
  data.GetName(name.Out());
  const auto code = ParseLong(ToUtf8(name.View()));
  if (access == nullptr || !code || *code < kFirstExtendedCode || *code > kLongCode) return false;
  item->code = *code;
  SHORT shortNumber = 0;
  LONG number = 0;
  double real = 0.0;
  Bstr text;
  if (access->GetShort(&shortNumber) == S_OK) {
    item->value = shortNumber;
  } else if (access->GetLong(&number) == S_OK) {
    item->value = number;
  } else if (access->GetDouble(&real) == S_OK) {
    item->value = real;
  } else if (access->GetString(text.Out()) == S_OK) {
    item->value = WideString(text.View());
  } else {
    return false;
  }
  return true;
}

std::string TextOf(const Value& value, const TextCodec& codec) {
  if (const auto* text = std::get_if<WideString>(&value)) return codec.Write(*text);
  if (const auto* real = std::get_if<double>(&value)) return RealText(*real);
  if (const auto* number = std::get_if<SHORT>(&value)) return std::to_string(*number);
  return std::to_string(std::get<LONG>(value));
}

std::vector<Item> ItemsOf(IZDMObject& object, const GUID& key) {
  std::vector<Item> items;
  IZExtDataMgr* manager = object.GetExtDataMgr();
  IZExtDataCollection* collection = manager != nullptr ? manager->GetCollection(key) : nullptr;
  for (LONGLONG pos = collection != nullptr ? collection->GetHeadPosition() : 0; pos != 0;) {
    IZExtData* data = collection->GetNext(pos);
    Item item = {};
    if (data != nullptr && ReadItem(*data, &item)) items.push_back(std::move(item));
  }
  return items;
}

/// All places at which the data of one application stand.
struct Run {
  WideString name;
  std::size_t head = 0;              // of its first name
  std::vector<std::size_t> members;  // of the values, in order; also behind a second name
};

using Runs = std::map<GUID, Run, KeyLess>;

std::size_t FirstExtended(const std::vector<Group>& groups) {
  std::size_t at = 0;
  while (at < groups.size() && groups[at].code != kApplicationCode) ++at;
  return at;
}

/// What is no extended data in between belongs to nobody.
Runs RunsOf(const std::vector<Group>& groups, const TextCodec& codec) {
  Runs runs;
  Run* run = nullptr;
  for (std::size_t at = FirstExtended(groups); at < groups.size(); ++at) {
    if (groups[at].code == kApplicationCode) {
      WideString name = codec.Show(groups[at].text);
      const auto [found, isNew] = runs.try_emplace(KeyOfApplication(name));
      run = &found->second;
      if (isNew) *run = {std::move(name), at, {}};
    } else if (groups[at].code >= kFirstExtendedCode) {
      run->members.push_back(at);
    }
  }
  return runs;
}

void AppendItem(const Item& item, const TextCodec& codec, GroupList* out) {
  out->Append({item.code, TextOf(item.value, codec)});
}

}  // namespace

GUID KeyOfApplication(const WideString& name) {
  constexpr ULONGLONG kPrime = 0x100000001B3;
  ULONGLONG halves[2] = {0xCBF29CE484222325, 0x84222325CBF29CE4};
  for (const OLECHAR unit : NameKey(name)) {
    for (ULONGLONG& half : halves) {
      half = (half ^ (unit & 0xFFU)) * kPrime;
      half = (half ^ static_cast<ULONGLONG>(unit >> 8)) * kPrime;
      half ^= half >> 29;
    }
    halves[1] += halves[0];
  }
  GUID key;
  static_assert(sizeof(key) == sizeof(halves));
  std::memcpy(&key, halves, sizeof(key));
  key.Data3 = static_cast<USHORT>((key.Data3 & 0x0FFF) | 0x8000);  // made of a name
  key.Data4[0] = static_cast<BYTE>((key.Data4[0] & 0x3F) | 0x80);
  return key;
}

bool KeyLess::operator()(const GUID& left, const GUID& right) const {
  return std::memcmp(&left, &right, sizeof(GUID)) < 0;
}

void MakeExtendedData(IZDMObject& object, const GroupList& groups, const TextCodec& codec) {
  const std::vector<Group> all = groups.All();
  for (const auto& [key, run] : RunsOf(all, codec)) {
    for (const std::size_t at : run.members) {
      object.SetExtData(key, MakeItem(ItemOf(all[at], codec)));
    }
  }
}

void AppendExtendedData(IZDMObject& object, const std::vector<Group>& read,
                        const std::vector<Group>& written, const TextCodec& codec,
                        const Applications& applications, GroupList* out) {
  Runs runs = RunsOf(read, codec);
  std::vector<const Run*> runAt(read.size(), nullptr);  // whose items replace what stands there
  std::map<const Run*, std::vector<Item>> changed;
  for (const auto& [key, run] : runs) {
    std::vector<Item> items = ItemsOf(object, key);
    bool isSame = items.size() == run.members.size();
    for (std::size_t i = 0; isSame && i < items.size(); ++i) {
      isSame = items[i] == ItemOf(read[run.members[i]], codec);
    }
    if (isSame) continue;
    for (const std::size_t at : run.members) runAt[at] = &run;
    runAt[run.head] = &run;
    changed.emplace(&run, std::move(items));
  }
  for (std::size_t at = FirstExtended(read); at < read.size(); ++at) {
    const Run* run = runAt[at];
    if (run == nullptr) {
      out->Append(written[at]);
    } else if (at == run->head) {
      const std::vector<Item>& items = changed[run];
      if (items.empty()) continue;
      out->Append(written[at]);
      for (std::size_t i = 0; i < items.size(); ++i) {
        const bool isKept =
            i < run->members.size() && items[i] == ItemOf(read[run->members[i]], codec);
        if (isKept) {
          out->Append(written[run->members[i]]);
        } else {
          AppendItem(items[i], codec, out);
        }
      }
    }
  }
  if (object.GetExtDataMgr() == nullptr) return;
  for (const auto& [key, name] : applications) {
    const std::vector<Item> items = runs.contains(key) ? std::vector<Item>() : ItemsOf(object, key);
    if (items.empty()) continue;
    out->Append({kApplicationCode, codec.Write(name)});
    for (const Item& item : items) AppendItem(item, codec, out);
  }
}

}  // namespace zdm
