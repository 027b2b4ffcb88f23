// CStructure: an identifier and an ordered list of owned members.
#include <cstring>
#include <new>

#include "vextools/structures.h"

CStructure::CStructure(const char* identifier) : m_identifier(identifier ? identifier : "") {}

CStructure::~CStructure() { ClearMembers(); }

void CStructure::SetIdf(const char* identifier) { m_identifier = identifier ? identifier : ""; }

CMember* CStructure::ItemMember(std::uint32_t index) const {
  return index < m_members.size() ? m_members[index] : nullptr;
}

void CStructure::ClearMembers() {
  for (CMember* member : m_members) delete member;
  m_members.clear();
}

void CStructure::RemoveMember(std::uint32_t index) {
  if (index >= m_members.size()) return;
  delete m_members[index];
  m_members.erase(m_members.begin() + index);
}

namespace {

template <class... Args>
CMember* Append(std::vector<CMember*>& members, Args... args) {
  CMember* member = nullptr;
  try {
    member = new CMember(args...);
    members.push_back(member);
  } catch (const std::bad_alloc&) {
    delete member;
    return nullptr;
  }
  return member;
}

}  // namespace

CMember* CStructure::AddMember(std::int32_t value) { return Append(m_members, value); }

CMember* CStructure::AddMember(double value) { return Append(m_members, value); }

CMember* CStructure::AddMember(const char* text, bool isStructure) { return Append(m_members, text, isStructure); }

CMember* CStructure::SearchStructure(const char* name) const {
  if (!name || !*name) return nullptr;
  for (CMember* member : m_members) {
    CStructure* structure = nullptr;
    if (member->GetStructure(structure) && structure && std::strcmp(structure->GetIdf(), name) == 0) return member;
  }
  return nullptr;
}
