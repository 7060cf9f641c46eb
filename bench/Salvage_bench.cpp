// How much of a damaged document is got back: 1000 objects, each with a name, a text and a relation
// to another; each trial damages the saved file, salvages it and counts the objects whose class,
// ID, name, text and the ID referred to are as saved.
//   salvage [FILE]     FILE is made; prints one JSON object
#include "document/CZDMPlainObject.h"
#include "document/Document.h"
#include "document/DocumentError.h"
#include "document/Salvage.h"
#include "zdm/extdata/ZExtDataWrapper.h"
#include "zdm/framework/ZClass.h"
#include "zdm/identity/OID.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <functional>
#include <iterator>
#include <span>
#include <string>
#include <unordered_set>
#include <vector>

namespace {

constexpr GUID kModule = zdm::ParseGuid("E0000000-0000-4000-8000-000000000001");
constexpr const OLECHAR* kNote = OLESTR("note");
constexpr LONG kObjects = 1000;
constexpr LONG kManagers = 10;
constexpr LONG kFirstID = kManagers + 1;

using Bytes = std::vector<BYTE>;

class Random {
 public:
  explicit Random(ULONGLONG seed) : state_(seed) {}
  ULONGLONG Next() {
    state_ ^= state_ << 13;
    state_ ^= state_ >> 7;
    state_ ^= state_ << 17;
    return state_;
  }
  zdm::WideString Letters(int count) {
    zdm::WideString text;
    while (count > 0) {
      ULONGLONG value = Next();
      for (int i = 0; i < 12 && count > 0; ++i, --count, value /= 26) {
        text += static_cast<OLECHAR>('a' + value % 26);
      }
    }
    return text;
  }

 private:
  ULONGLONG state_;
};

zdm::WideString NameOf(LONG i) {
  char text[24];
  std::snprintf(text, sizeof(text), "Object-%08u", static_cast<unsigned>(i));
  return {text, text + std::char_traits<char>::length(text)};
}

/// Objects 11 to 1010 in managers 1 to 10. Answers their texts.
std::vector<zdm::WideString> Make(const char* path) {
  auto document = zdm::Document::Create(OLESTR("Salvage"));
  std::vector<IZDMObjMgr*> managers(kManagers);
  for (LONG i = 0; auto& manager : managers) {
    manager = document.AddManager(NameOf(i--).c_str());
  }
  Random random(0x9E3779B97F4A7C15);
  std::vector<zdm::WideString> texts;
  std::vector<IZDMObject*> objects;
  for (LONG i = 0; i < kObjects; ++i) {
    objects.push_back(document.Add(NameOf(i), managers[static_cast<std::size_t>(i % kManagers)]));
    texts.push_back(random.Letters(24));
    ZExtDataWrapper::AddExtData(objects.back(), kModule, kNote, texts.back().c_str(), true);
  }
  for (std::size_t i = 0; i < objects.size(); ++i) {
    document.Relate(objects[i], objects[(7 * i + 1) % objects.size()]);
  }
  document.Save(path);
  return texts;
}

zdm::WideString TextOf(BSTR text) {
  zdm::WideString copy(text != nullptr ? text : OLESTR(""));
  SysFreeString(text);
  return copy;
}

bool IsRight(CZDocument& document, LONG i, const zdm::WideString& text) {
  const OID* oid = document.GetOIDByID(kFirstID + i);
  IZDMObject* object = oid != nullptr && oid->JudgeStatus(ZOS_VALID) ? oid->Object : nullptr;
  if (dynamic_cast<CZDMPlainObject*>(object) == nullptr) return false;
  BSTR name = nullptr;
  object->GetName(&name);
  if (TextOf(name) != NameOf(i)) return false;
  BSTR note = nullptr;
  if (!ZExtDataWrapper::GetExtData(object, kModule, kNote, &note) || TextOf(note) != text) {
    return false;
  }
  const std::vector<zdm::Reference> references = zdm::ReferencesOf(object);
  return references.size() == 1 && references[0].to->ID == kFirstID + (7 * i + 1) % kObjects;
}

/// Its manager is another one than saved, and not Recovered.
bool IsOwnerWrong(CZDocument& document, LONG i) {
  const OID* oid = document.GetOIDByID(kFirstID + i);
  IZDMObject* owner = oid != nullptr && oid->Object != nullptr ? oid->Object->GetOwner() : nullptr;
  if (owner == nullptr || static_cast<LONG>(owner->GetID()) == i % kManagers + 1) return false;
  BSTR name = nullptr;
  owner->GetName(&name);
  return TextOf(name) != OLESTR("Recovered");
}

/// What a series of trials brought.
struct Series {
  const char* name;
  int trials = 0;
  LONGLONG right = 0;
  LONG worst = kObjects;
  int refused = 0;  // nothing was found
  LONG wrongOwners = 0;
  LONGLONG doubtful = 0;
  LONGLONG unchecked = 0;  // without a checksum that would tell
  LONG wrongUnsaid = 0;    // not as saved, and the ledger does not say so
};

LONG Try(Series& series, const Bytes& damaged, const std::vector<zdm::WideString>& texts) {
  LONG right = 0;
  try {
    const zdm::Salvaged salvaged = zdm::Salvage(damaged);
    std::unordered_set<LONG> claimed;
    for (const auto& object : salvaged.ledger.objects) {
      if (object.fate != zdm::ObjectFate::kRecovered) continue;
      if (object.isUnchecked) {
        ++series.unchecked;
      } else {
        claimed.insert(object.id);
      }
    }
    for (LONG i = 0; i < kObjects; ++i) {
      const bool isRight = IsRight(*salvaged.document, i, texts[static_cast<std::size_t>(i)]);
      if (isRight) ++right;
      if (IsOwnerWrong(*salvaged.document, i)) ++series.wrongOwners;
      if (!isRight && claimed.contains(kFirstID + i)) ++series.wrongUnsaid;
    }
    series.doubtful += static_cast<LONGLONG>(salvaged.ledger.Count(zdm::ObjectFate::kDoubtful));
  } catch (const zdm::DocumentError&) {
    ++series.refused;
  }
  ++series.trials;
  series.right += right;
  series.worst = std::min(series.worst, right);
  return right;
}

void Print(const Series& series, const char* more = "") {
  std::printf(
      "  \"%s\": {\"trials\": %d, \"mean\": %.2f, \"worst\": %d, \"refused\": %d, "
      "\"wrong_owners\": %d, \"doubtful\": %lld, \"unchecked\": %lld, \"wrong_unsaid\": %d%s}",
      series.name, series.trials, static_cast<double>(series.right) / std::max(1, series.trials),
      static_cast<int>(series.worst), series.refused, static_cast<int>(series.wrongOwners),
      static_cast<long long>(series.doubtful), static_cast<long long>(series.unchecked),
      static_cast<int>(series.wrongUnsaid), more);
}

/// Objects all of whose bytes stand before `end`, by the ledger of the sound file.
LONG ObjectsBefore(const zdm::SalvageLedger& sound, std::size_t end) {
  return static_cast<LONG>(std::ranges::count_if(sound.objects, [&](const auto& object) {
    return object.id >= kFirstID && object.place + object.length <= end;
  }));
}

}  // namespace

int main(int argc, char** argv) {
  const char* path = argc > 1 ? argv[1] : "salvage.zdm";
  const std::vector<zdm::WideString> texts = Make(path);
  std::ifstream in(path, std::ios::binary);
  const Bytes sound((std::istreambuf_iterator<char>(in)), {});
  const zdm::SalvageLedger ledger = zdm::Salvage(path).ledger;
  constexpr std::size_t kSector = 512;

  std::printf("{\"program\": \"zdm\", \"file_bytes\": %zu, \"objects\": %d,\n", sound.size(),
              static_cast<int>(kObjects));
  Series none = {"none"};
  Try(none, sound, texts);
  Print(none);

  Series sectors = {"sector"};
  for (std::size_t at = 0; at < sound.size(); at += kSector) {
    Bytes damaged = sound;
    std::fill_n(damaged.begin() + static_cast<std::ptrdiff_t>(at),
                std::min(kSector, sound.size() - at), BYTE{0});
    Try(sectors, damaged, texts);
  }
  std::printf(",\n");
  Print(sectors);

  Series bits = {"bits"};
  Random random(0xD1B54A32D192ED03);
  for (int trial = 0; trial < 100; ++trial) {
    Bytes damaged = sound;
    for (int i = 0; i < 16; ++i) {
      const ULONGLONG bit = random.Next() % (8 * sound.size());
      damaged[bit / 8] ^= static_cast<BYTE>(1 << bit % 8);
    }
    Try(bits, damaged, texts);
  }
  std::printf(",\n");
  Print(bits);

  Series cuts = {"cut"};
  std::string more = ", \"at\": [";
  for (std::size_t percent = 10; percent <= 95; percent += 5) {
    const std::size_t end = sound.size() * percent / 100;
    const LONG right =
        Try(cuts, Bytes(sound.begin(), sound.begin() + static_cast<std::ptrdiff_t>(end)), texts);
    more += (percent == 10 ? "[" : ", [") + std::to_string(percent) + ", " + std::to_string(right) +
            ", " + std::to_string(ObjectsBefore(ledger, end)) + "]";
  }
  std::printf(",\n");
  Print(cuts, (more + "]").c_str());
  std::printf("}\n");
  return 0;
}
