// Named records written to one line of text and read back.
//
// A CLstStructures holds named CStructures, a CStructure holds an ordered list of CMembers, and a member
// is a string, an integer, a real, a boolean or a nested structure. Scalars are kept as their text and
// converted on access. MakeString writes, for example:
//   Point{12,3.5,true,"abc"};Frame{Point{1}}
// BuildFromString reads that form back, with white space (but no line break) allowed between tokens.
// The format has asymmetries that callers rely on, kept as they are:
//   - numbers are read without a sign: a negative member is written ("-5") but not read back;
//   - a structure without members is written ("A{}") but refused when read;
//   - strings are written between quotes without escaping, and read with their backslashes kept;
//   - a real's text is its "%lf" form with every 0 after the point removed and the text cut at the first
//     removed 0: 2.5 stays 2.5, 3.0 gives 3 and 1.05 gives 1; a number read with a point is trimmed the
//     same way, so a lone "." reads as a real with an empty text, which is written as nothing;
//   - TAB, LF and CR in the input are read as the two characters \t, \n, \r; a line break between
//     tokens therefore makes the text invalid.
// Nesting deeper than 200 structures is refused when read (keeps the parser's stack bounded).
//
// Copies of these objects are memberwise: the copy and the original share the owned members and
// structures, and each deletes them. Do not copy live objects.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "export.h"

enum MEMBERTYPE : std::int32_t {
  MT_STRING = 0,
  MT_INTEGER = 1,
  MT_REAL = 2,
  MT_BOOLEAN = 3,
  MT_STRUCTURE = 4,
};

class CStructure;

class VEXTOOLS_API CMember {
 public:
  CMember(std::int32_t value);                           // text "%ld"
  CMember(bool value);                                   // "true" or "false"
  CMember(double value);                                 // "%lf", trimmed as described above
  CMember(const char* text, bool isStructure = false);  // a string, or a new structure named text
  CMember(const CMember&) = default;                     // shares the owned structure
  CMember& operator=(const CMember&) = default;
  virtual ~CMember();

  MEMBERTYPE GetType() const { return m_type; }
  void SetType(MEMBERTYPE type) { m_type = type; }  // the tag only; the text stays
  bool IsString() const { return m_type == MT_STRING; }
  bool IsNumeric() const { return m_type == MT_INTEGER || m_type == MT_REAL; }
  bool IsBoolean() const { return m_type == MT_BOOLEAN; }
  bool IsStructure() const { return m_type == MT_STRUCTURE; }

  bool GetInteger(std::int32_t& value) const;  // integers only
  std::int32_t Integer() const;
  bool GetReal(double& value) const;  // integers and reals
  double Real() const;
  bool GetBoolean(bool& value) const;  // booleans only: true when the text is "true"
  bool Boolean() const;
  bool GetString(std::string& value) const;  // strings only; TAB, LF, CR as \t, \n, \r
  const char* String() const { return m_value.c_str(); }  // the raw text, whatever the type
  bool GetStructure(CStructure*& value) const;  // structure members only
  // The owned structure; a member that owns none (its type was changed by SetType) gives an empty
  // structure that is not part of any list.
  CStructure& Structure();

 protected:
  CMember();    // the integer 0
  void Init();  // back to the integer 0, deleting any owned structure

  MEMBERTYPE m_type;
  std::string m_value;
  CStructure* m_structure;
};

class VEXTOOLS_API CStructure {
 public:
  CStructure(const char* identifier = "");
  CStructure(const CStructure&) = default;  // shares the members
  CStructure& operator=(const CStructure&) = default;
  virtual ~CStructure();

  const char* GetIdf() const { return m_identifier.c_str(); }
  void SetIdf(const char* identifier);
  std::uint32_t GetMembersCount() const { return static_cast<std::uint32_t>(m_members.size()); }
  CMember* ItemMember(std::uint32_t index) const;  // null out of range
  void ClearMembers();
  void RemoveMember(std::uint32_t index);  // nothing out of range

  // Append a new member and return it (null when memory runs out). There is no boolean overload.
  CMember* AddMember(std::int32_t value);
  CMember* AddMember(double value);
  CMember* AddMember(const char* text, bool isStructure = false);

  // The first structure member whose structure is called name (case-sensitive); null for a null or
  // empty name.
  CMember* SearchStructure(const char* name) const;

 protected:
  std::string m_identifier;
  std::vector<CMember*> m_members;
};

class VEXTOOLS_API CLstStructures {
 public:
  CLstStructures() = default;
  CLstStructures(const CLstStructures&) = default;  // shares the structures
  CLstStructures& operator=(const CLstStructures&) = default;
  virtual ~CLstStructures();

  void Clear();
  std::uint32_t GetCount() const { return static_cast<std::uint32_t>(m_structures.size()); }
  CStructure* Item(std::uint32_t index) const;       // null out of range
  CStructure* Item(const char* identifier) const;    // first with that name (case-sensitive), or null
  CStructure* Add(const char* identifier);           // appends a new empty structure
  void Remove(std::uint32_t index);                  // nothing out of range

  void MakeString(std::string& out) const;     // replaces out with the text of the whole list
  bool BuildFromString(const std::string& text);  // false on any error, the list then empty

 protected:
  std::vector<CStructure*> m_structures;
};
