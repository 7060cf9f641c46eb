// A program of somebody else's, built against the installed package.
#include <platform/core/CZStream.h>
#include <platform/core/ZCore.h>
#include <zdm/framework/ZRefPtr.h>
#include <zdm/module/ClassTable.h>

#include <cstdio>

int main() {
  // A host's own registration, also where the host is not built for wide characters.
  CZFactory& factory = *ZCore::GetZFactory();
  if (factory.RegisterClass(*factory.Find(CZStream::kClassID)) == nullptr) return 1;
  CZObject* created = ZCore::GetZFactory()->Create(CZStream::kClassID);
  if (created == nullptr) return 1;
  const auto stream = zdm::Attached(zdm::ViewAs<IZStream>(created));
  std::printf("%zu classes, a stream at %u\n", zdm::GetClassTable().size(),
              static_cast<unsigned>(stream->GetPosition()));
  return zdm::GetClassTable().size() == 44 && stream->GetReferenceCount() == 1 ? 0 : 1;
}
