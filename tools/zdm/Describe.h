// An object in words, once: as JSON, and from that as lines.
#pragma once

#include "document/References.h"
#include "tools/zdm/Output.h"

#include <string>
#include <vector>

class CZDocument;
class OID;
struct IZDMObject;

namespace zdm::tool {

std::string TextOf(const GUID& guid);
/// UTF-8; null without a name.
Json NameOf(IZDMObject& object);
/// The class; of an absent one its identifier.
std::string ClassOf(IZDMObject& object);

/// ID, name and class; of a record without an object these are null.
Json Brief(const OID& oid);
/// The same on a line.
std::string BriefLine(const OID& oid);

/// Everything the library knows of an object, field by field: header, name, relations, those to
/// categories with their values beside the category's, extended data, parameters and the property
/// sheet, what a manager holds in its order, and a checksum of the record that would be saved.
Json Fields(CZDocument& document, IZDMObject& object);
/// One line a field or element.
std::vector<std::string> Lines(const Json& fields);

}  // namespace zdm::tool
