// KARERRORFILE: an error report beside an input file, named like it with the extension ".ERR". Made
// empty with the object, appended to by each Write (open, write at the end, close), and deleted with
// the object when nothing was written. FileErrOpen, FileErrWrite and FileErrClose do the same through
// a plain pointer.
#pragma once

#include "basicfile.h"
#include "export.h"

class VEXTOOLS_API KARERRORFILE : public KARBASICFILE {
 public:
  KARERRORFILE();  // no report: the object never writes to the disk
  KARERRORFILE(char* inputName);
  ~KARERRORFILE() override;

  // The report name: inputName with its extension, from the first period of its last component,
  // replaced by ".ERR". A null input leaves the name unchanged.
  void MakeFileName(char* inputName);
  // Appends text as it is (no line end is added).
  void Write(char* text);

 protected:
  char report_name_[KARFILE_NAME_SIZE];
  char extension_[256];
};

VEXTOOLS_API KARERRORFILE* FileErrOpen(char* inputName);
VEXTOOLS_API void FileErrWrite(KARERRORFILE* file, char* text);
VEXTOOLS_API void FileErrClose(KARERRORFILE* file);
