#include "platform/ole/portable/GsfWriter.h"

#include "platform/ole/portable/StorageError.h"
#include "platform/system/Text.h"

#include <gsf/gsf-outfile-msole.h>
#include <gsf/gsf-output-stdio.h>
#include <gsf/gsf-utils.h>

#include <cerrno>
#include <memory>
#include <utility>
#include <vector>

namespace zdm {

namespace {

struct Unref {
  void operator()(void* object) const { g_object_unref(object); }
};
using Output = std::unique_ptr<GsfOutput, Unref>;

GsfOutfile* AsFolder(const Output& output) { return GSF_OUTFILE(output.get()); }

HRESULT WriteFault(int error) {
  return error == ENOSPC || error == EDQUOT || error == EFBIG ? StorageError(error, ".")
                                                              : STG_E_WRITEFAULT;
}

void SetClass(const Output& output, const CLSID& clsid) {
  guint8 bytes[sizeof(CLSID)];
  std::memcpy(bytes, &clsid, sizeof(bytes));
  gsf_outfile_msole_set_class_id(GSF_OUTFILE_MSOLE(output.get()), bytes);
}

HRESULT WriteStream(const StorageNode& node, GsfOutput* output) {
  if (node.content != nullptr) {
    const HRESULT result = node.content->ForEachPiece([&](const BYTE* data, std::size_t size) {
      return gsf_output_write(output, size, data) ? S_OK : STG_E_WRITEFAULT;
    });
    if (FAILED(result)) return result;
  }
  return gsf_output_close(output) ? S_OK : STG_E_WRITEFAULT;
}

/// A storage that is being written, and the next of its elements.
struct OpenFolder {
  Output output;
  StorageNode::Children::const_iterator next;
  StorageNode::Children::const_iterator end;
};

HRESULT WriteElements(const StorageNode& root, Output top) {
  std::vector<OpenFolder> folders;
  SetClass(top, root.clsid);
  folders.push_back({std::move(top), root.children.begin(), root.children.end()});
  while (!folders.empty()) {
    OpenFolder& folder = folders.back();
    if (folder.next == folder.end) {
      if (!gsf_output_close(folder.output.get())) return STG_E_WRITEFAULT;
      folders.pop_back();
      continue;
    }
    const StorageNode& node = **(folder.next++);
    const std::string name = ToUtf8(node.name);
    Output child(gsf_outfile_new_child(AsFolder(folder.output), name.c_str(),
                                       node.IsStorage() ? TRUE : FALSE));
    if (child == nullptr) return STG_E_WRITEFAULT;
    if (node.IsStorage()) {
      SetClass(child, node.clsid);
      folders.push_back({std::move(child), node.children.begin(), node.children.end()});
    } else {
      const HRESULT result = WriteStream(node, child.get());
      if (FAILED(result)) return result;
    }
  }
  return S_OK;
}

}  // namespace

HRESULT WriteWithGsf(const StorageNode& root, std::FILE* file) {
  gsf_init();
  const Output sink(gsf_output_stdio_new_FILE("compound file", file, TRUE));
  if (sink == nullptr) return E_OUTOFMEMORY;
  HRESULT result = WriteElements(root, Output(GSF_OUTPUT(gsf_outfile_msole_new(sink.get()))));
  if (!gsf_output_is_closed(sink.get()) && !gsf_output_close(sink.get()) && SUCCEEDED(result)) {
    result = STG_E_WRITEFAULT;
  }
  if (SUCCEEDED(result) && std::fflush(file) != 0) return WriteFault(errno);
  // The writer goes on after some failures; the file below knows of all, and of their reasons.
  if (const GError* error = gsf_output_error(sink.get())) return WriteFault(error->code);
  return SUCCEEDED(result) && std::ferror(file) != 0 ? STG_E_WRITEFAULT : result;
}

}  // namespace zdm
