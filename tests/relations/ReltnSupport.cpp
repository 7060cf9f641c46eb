#include "tests/relations/ReltnSupport.h"

#include "platform/geometry/GeMatrix.h"
#include "zdm/identity/PID.h"

#include <algorithm>
#include <cctype>
#include <iterator>

namespace zdm::test {

ZDM_OBJECT_BODY(PlainReltn)
ZDM_OBJECT_BODY(Shape)
ZDM_OBJECT_BODY(Thing)

namespace {

[[maybe_unused]] const bool registered = [] {
  PlainReltn::zInit();
  Shape::zInit();
  Thing::zInit();
  return true;
}();

ZRefPtr<IZSingleReltn> Named(char name) {
  auto reltn = MakeObject<IZSingleReltn, PlainReltn>();
  reltn->SetReltnTag(name);
  return reltn;
}

}  // namespace

void Shape::GetBox(double* out, SubID* sub, GiContext* context) {
  std::copy(std::begin(box), std::end(box), out);
  askedSub = sub;
  askedContext = context;
}

void Shape::SetVisibility(eZGiDraw, bool value, GiContext*) { visible = value; }
void Shape::Transform(const GeMatrix& matrix) { moved = matrix.GetTranslation(); }

bool Recorder::Note(const std::string& word) {
  words += words.empty() ? word : " " + word;
  return word == stopAt;
}

bool Recorder::Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) {
  if (Note(std::string(1, static_cast<char>(reltn->GetReltnTag())))) return true;
  return descends && reltn->Accept(root, owner, this);
}

bool Recorder::Visit(IZDMObject*, IZDMObject*, OID* oid) {
  return Note("owner" + (oid != nullptr ? std::to_string(oid->ID) : "-"));
}

bool Recorder::MapOID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, OID** oid) {
  const std::string word = "oid" + std::to_string((*oid)->ID);
  askedRoot = root;
  askedOwner = owner;
  askedReltn = reltn;
  if (newOid != nullptr) *oid = newOid;
  return Note(word);
}

bool Recorder::MapPID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, PID** pid) {
  const std::string word = "pid" + std::to_string((*pid)->ID);
  askedRoot = root;
  askedOwner = owner;
  askedReltn = reltn;
  if (newPid != nullptr) *pid = newPid;
  return Note(word);
}

ZRefPtr<IZSingleReltn> Valid(char name) { return Named(name); }

ZRefPtr<IZSingleReltn> Invalid(char name) {
  auto reltn = Named(name);
  reltn->ClearReltnStatus(ZRS_VALID);
  return reltn;
}

ZRefPtr<IZReltnColl> MakeReltns(const std::string& letters) {
  auto coll = MakeObject<IZReltnColl, CZReltnColl>();
  for (const char letter : letters) {
    if (letter == '-') {
      coll->AddTail(MakeObject<IZObject, Stranger>());  // no relation, so a null element
    } else if (std::isupper(letter) != 0) {
      coll->AddTail(Invalid(static_cast<char>(std::tolower(letter))));
    } else {
      coll->AddTail(Valid(letter));
    }
  }
  return coll;
}

std::string LettersIn(IZReltnColl& coll) {
  std::string letters;
  for (LONGLONG pos = coll.GetHeadPosition(); pos != 0;) {
    IZRelation* element = coll.GetNext(pos);
    if (element == nullptr) {
      letters += '-';
    } else if (ViewAs<IZReltnColl>(element) != nullptr) {
      letters += '?';
    } else {
      const char letter = static_cast<char>(element->GetReltnTag());
      const bool valid = element->JudgeReltnStatus(ZRS_VALID);
      letters += valid ? letter : static_cast<char>(std::toupper(letter));
    }
  }
  return letters;
}

std::vector<BYTE> Saved(IZRelation& reltn) {
  ByteStream stream;
  reltn.Save(&stream, nullptr);
  return stream.GetBytes();
}

}  // namespace zdm::test
