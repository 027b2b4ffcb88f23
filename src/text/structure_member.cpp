// CMember: one typed value of a structure, kept as its text.
#include <string>

#include "text/structure_text.h"
#include "vextools/structures.h"

using vex::text::RealText;

CMember::CMember() : m_type(MT_INTEGER), m_value("0"), m_structure(nullptr) {}

CMember::CMember(std::int32_t value) : m_type(MT_INTEGER), m_value(std::to_string(value)), m_structure(nullptr) {}

CMember::CMember(bool value) : m_type(MT_BOOLEAN), m_value(value ? "true" : "false"), m_structure(nullptr) {}

CMember::CMember(double value) : m_type(MT_REAL), m_value(RealText(value)), m_structure(nullptr) {}

CMember::CMember(const char* text, bool isStructure)
    : m_type(isStructure ? MT_STRUCTURE : MT_STRING), m_value(text ? text : ""), m_structure(nullptr) {
  if (isStructure) m_structure = new CStructure(text);
}

CMember::~CMember() { delete m_structure; }

void CMember::Init() {
  m_type = MT_INTEGER;
  m_value.assign(1, '0');  // (not = "0": GCC 12 warns falsely on that)
  delete m_structure;
  m_structure = nullptr;
}

bool CMember::GetInteger(std::int32_t& value) const {
  if (m_type != MT_INTEGER) return false;
  value = vex::text::TextToLong(m_value);
  return true;
}

std::int32_t CMember::Integer() const {
  std::int32_t value = 0;
  return GetInteger(value) ? value : 0;
}

bool CMember::GetReal(double& value) const {
  if (m_type != MT_INTEGER && m_type != MT_REAL) return false;
  value = vex::text::TextToReal(m_value);
  return true;
}

double CMember::Real() const {
  double value = 0.0;
  return GetReal(value) ? value : 0.0;
}

bool CMember::GetBoolean(bool& value) const {
  if (m_type != MT_BOOLEAN) return false;
  value = m_value == "true";
  return true;
}

bool CMember::Boolean() const {
  bool value = false;
  return GetBoolean(value) && value;
}

bool CMember::GetString(std::string& value) const {
  if (m_type != MT_STRING) return false;
  try {
    value = vex::text::EscapeLineBreaks(m_value);
  } catch (...) {
    return false;
  }
  return true;
}

bool CMember::GetStructure(CStructure*& value) const {
  if (m_type != MT_STRUCTURE) return false;
  value = m_structure;
  return true;
}

CStructure& CMember::Structure() {
  if (m_structure) return *m_structure;
  static CStructure none;  // for a member whose tag was set by hand; emptied on every use
  none.ClearMembers();
  none.SetIdf("");
  return none;
}
