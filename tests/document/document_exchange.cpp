// Writes a document of every class, or opens one and saves it elsewhere, so that documents can go
// from one system to the other and be compared there. Used by tests/exchange.sh.
//   document_exchange write FILE
//   document_exchange save FROM TO
#include "platform/system/Text.h"
#include "tests/support/EveryClass.h"

#include <cstdio>
#include <cstring>
#include <exception>

int main(int argc, char** argv) {
  const bool writes = argc == 3 && std::strcmp(argv[1], "write") == 0;
  const bool saves = argc == 4 && std::strcmp(argv[1], "save") == 0;
  if (!writes && !saves) {
    std::fprintf(stderr, "usage: %s write FILE | save FROM TO\n", argv[0]);
    return 2;
  }
  const auto path = [&](int i) { return std::filesystem::path(zdm::FromUtf8(argv[i])); };
  try {
    const auto document = writes ? zdm::test::DocumentOfEveryClass() : CZDocument::Open(path(2));
    document->SaveAs(path(writes ? 2 : 3));
    return 0;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    return 1;
  }
}
