// CLstStructures: the list of structures, and its text form.
#include <cstring>
#include <new>

#include "text/structure_parser.h"
#include "vextools/structures.h"

namespace {

using vex::text::CParser;

constexpr int kMaxDepth = 200;

// Writing. Strings go between quotes unescaped; other scalars bare.
void Write(const CStructure& structure, std::string& out);

void Write(CMember& member, std::string& out) {
  CStructure* nested = nullptr;
  if (member.GetStructure(nested)) {
    if (nested) Write(*nested, out);  // a member tagged as structure by hand without one writes nothing
  } else if (member.IsString()) {
    out += '"';
    out += member.String();
    out += '"';
  } else {
    out += member.String();
  }
}

void Write(const CStructure& structure, std::string& out) {
  out += structure.GetIdf();
  out += '{';
  for (std::uint32_t i = 0; i < structure.GetMembersCount(); ++i) {
    if (i) out += ',';
    Write(*structure.ItemMember(i), out);
  }
  out += '}';
}

// Reading: structure = identifier "{" member { "," member } "}".
bool ReadStructure(CParser& parser, CStructure& structure, int depth);

// member = number | boolean | string | identifier structure
bool ReadMember(CParser& parser, CStructure& structure, int depth) {
  bool isReal = false;
  if (parser.Number(isReal)) {
    CMember* member = structure.AddMember(parser.Token().c_str(), false);
    if (member) member->SetType(isReal ? MT_REAL : MT_INTEGER);
    return member != nullptr;
  }
  if (parser.Boolean()) {
    CMember* member = structure.AddMember(parser.Token().c_str(), false);
    if (member) member->SetType(MT_BOOLEAN);
    return member != nullptr;
  }
  if (parser.String()) return structure.AddMember(parser.Token().c_str(), false) != nullptr;
  const std::size_t start = parser.Position();
  if (!parser.Identifier()) return false;
  CMember* member = structure.AddMember(parser.Token().c_str(), true);
  parser.Rewind(start);  // the structure reads its name again
  return member && ReadStructure(parser, member->Structure(), depth + 1);
}

bool ReadStructure(CParser& parser, CStructure& structure, int depth) {
  if (depth > kMaxDepth) return false;
  if (!parser.Identifier()) return false;
  structure.SetIdf(parser.Token().c_str());
  if (!parser.Punctuation('{')) return false;
  if (!ReadMember(parser, structure, depth)) return false;
  while (parser.Punctuation(',')) {
    if (!ReadMember(parser, structure, depth)) return false;
  }
  return parser.Punctuation('}');
}

// list = structure [";"] { structure [";"] }, a missing ";" allowed only at the end.
bool ReadList(CParser& parser, CLstStructures& list) {
  do {
    CStructure* structure = list.Add("");
    if (!structure || !ReadStructure(parser, *structure, 1)) return false;
    if (parser.AtEnd()) return true;
    if (!parser.Punctuation(';')) return false;
  } while (!parser.AtEnd());
  return true;
}

}  // namespace

CLstStructures::~CLstStructures() { Clear(); }

void CLstStructures::Clear() {
  for (CStructure* structure : m_structures) delete structure;
  m_structures.clear();
}

CStructure* CLstStructures::Item(std::uint32_t index) const {
  return index < m_structures.size() ? m_structures[index] : nullptr;
}

CStructure* CLstStructures::Item(const char* identifier) const {
  if (!identifier) return nullptr;
  for (CStructure* structure : m_structures) {
    if (std::strcmp(structure->GetIdf(), identifier) == 0) return structure;
  }
  return nullptr;
}

CStructure* CLstStructures::Add(const char* identifier) {
  CStructure* structure = nullptr;
  try {
    structure = new CStructure(identifier);
    m_structures.push_back(structure);
  } catch (const std::bad_alloc&) {
    delete structure;
    return nullptr;
  }
  return structure;
}

void CLstStructures::Remove(std::uint32_t index) {
  if (index >= m_structures.size()) return;
  delete m_structures[index];
  m_structures.erase(m_structures.begin() + index);
}

void CLstStructures::MakeString(std::string& out) const {
  try {
    std::string text;
    for (std::size_t i = 0; i < m_structures.size(); ++i) {
      if (i) text += ';';
      Write(*m_structures[i], text);
    }
    out.swap(text);
  } catch (const std::bad_alloc&) {
    out.clear();
  }
}

bool CLstStructures::BuildFromString(const std::string& text) {
  Clear();
  try {
    CParser parser(text);
    if (!text.empty() && ReadList(parser, *this)) return true;
  } catch (const std::bad_alloc&) {
  }
  Clear();
  return false;
}
