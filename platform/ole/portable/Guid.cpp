#include "platform/ole/portable/Guid.h"

#include "platform/ole/portable/TaskMemory.h"

#include <map>
#include <mutex>
#include <string>

namespace {

constexpr int kGuidTextUnits = 39;  // braces, 32 hex digits, 4 hyphens, terminator

OLECHAR* PutHex(OLECHAR* out, std::uint32_t value, int digits) {
  for (int shift = (digits - 1) * 4; shift >= 0; shift -= 4) {
    *out++ = static_cast<OLECHAR>(u"0123456789ABCDEF"[(value >> shift) & 0xF]);
  }
  return out;
}

// Reads `digits` hex digits at `text` and moves past them; false at anything else, the end
// included.
template <typename T>
bool ReadHex(const OLECHAR*& text, int digits, T& out) {
  std::uint32_t value = 0;
  for (; digits > 0; --digits, ++text) {
    const OLECHAR unit = *text;
    const OLECHAR lower = unit | 0x20;
    if (unit >= u'0' && unit <= u'9') {
      value = value * 16 + (unit - u'0');
    } else if (lower >= u'a' && lower <= u'f') {
      value = value * 16 + 10 + (lower - u'a');
    } else {
      return false;
    }
  }
  out = static_cast<T>(value);
  return true;
}

bool Skip(const OLECHAR*& text, OLECHAR unit) {
  if (*text != unit) return false;
  ++text;
  return true;
}

bool ReadGuid(const OLECHAR* text, GUID& out) {
  if (!Skip(text, u'{') || !ReadHex(text, 8, out.Data1) || !Skip(text, u'-') ||
      !ReadHex(text, 4, out.Data2) || !Skip(text, u'-') || !ReadHex(text, 4, out.Data3)) {
    return false;
  }
  for (int i = 0; i < 8; ++i) {
    if ((i == 0 || i == 2) && !Skip(text, u'-')) return false;
    if (!ReadHex(text, 2, out.Data4[i])) return false;
  }
  return Skip(text, u'}') && *text == u'\0';
}

struct ById {
  bool operator()(const CLSID& left, const CLSID& right) const {
    return std::memcmp(&left, &right, sizeof(CLSID)) < 0;
  }
};

struct ProgIDRegistry {
  std::mutex mutex;
  std::map<CLSID, std::basic_string<OLECHAR>, ById> names;
};

ProgIDRegistry& Registry() {
  static ProgIDRegistry registry;
  return registry;
}

}  // namespace

int StringFromGUID2(REFGUID guid, OLECHAR* text, int capacity) {
  if (text == nullptr || capacity < kGuidTextUnits) return 0;
  OLECHAR* out = text;
  *out++ = u'{';
  out = PutHex(out, guid.Data1, 8);
  *out++ = u'-';
  out = PutHex(out, guid.Data2, 4);
  *out++ = u'-';
  out = PutHex(out, guid.Data3, 4);
  for (int i = 0; i < 8; ++i) {
    if (i == 0 || i == 2) *out++ = u'-';
    out = PutHex(out, guid.Data4[i], 2);
  }
  *out++ = u'}';
  *out = u'\0';
  return kGuidTextUnits;
}

HRESULT CLSIDFromString(LPCOLESTR text, CLSID* out) {
  if (out == nullptr) return E_INVALIDARG;
  *out = CLSID_NULL;
  if (text == nullptr) return S_OK;
  CLSID read;
  if (!ReadGuid(text, read)) return CO_E_CLASSSTRING;
  *out = read;
  return S_OK;
}

HRESULT ProgIDFromCLSID(REFCLSID id, LPOLESTR* out) {
  if (out == nullptr) return E_INVALIDARG;
  *out = nullptr;
  ProgIDRegistry& registry = Registry();
  const std::lock_guard lock(registry.mutex);
  const auto found = registry.names.find(id);
  if (found == registry.names.end()) return REGDB_E_CLASSNOTREG;
  const std::size_t size = (found->second.size() + 1) * sizeof(OLECHAR);
  *out = static_cast<LPOLESTR>(CoTaskMemAlloc(size));
  if (*out == nullptr) return E_OUTOFMEMORY;
  std::memcpy(*out, found->second.c_str(), size);
  return S_OK;
}

void zdm::RegisterProgID(const CLSID& id, const OLECHAR* name) {
  ProgIDRegistry& registry = Registry();
  const std::lock_guard lock(registry.mutex);
  if (name == nullptr) {
    registry.names.erase(id);
  } else {
    registry.names[id] = name;
  }
}
