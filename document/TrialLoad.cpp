#include "document/TrialLoad.h"

#include "document/ObjectRecord.h"
#include "document/StreamOver.h"
#include "platform/system/Output.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/model/ObjectHeader.h"

#include <cstring>

namespace zdm {

namespace {

constexpr int kTrials = 1024;  // in one document, which gathers the IDs that are referred to

/// While it lives nothing is shown: what a trial would report is no news of the document.
class Unreported {
 public:
  Unreported() = default;
  Unreported(const Unreported&) = delete;
  Unreported& operator=(const Unreported&) = delete;
  ~Unreported() { SetMessageSink(former_); }

 private:
  static int Ignore(void*, const OLECHAR*, const OLECHAR*, UINT) { return IDOK; }

  MessageSink former_ = SetMessageSink({&Ignore, nullptr});
};

}  // namespace

std::size_t TrialLoad::Length(std::span<const BYTE> bytes) {
  ObjectHeader header;
  if (bytes.size() < sizeof(header)) return 0;
  std::memcpy(&header, bytes.data(), sizeof(header));
  if (trials_++ % kTrials == 0) {
    document_ = MakeObject<CZDocument, CZDocument>();
    document_->BeginLoading();
  }
  const auto object = CreateAs<IZDMObject>(header.classId);
  if (object == nullptr) return 0;
  BytesStream content({bytes.begin(), bytes.end()});
  const auto stream = StreamOver(content);
  const Unreported trial;
  const bool loads = LoadGuarded(object, [&] { object->Load(stream, document_); });
  return loads ? static_cast<std::size_t>(stream->GetPosition()) : 0;
}

}  // namespace zdm
