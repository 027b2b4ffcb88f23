# Third-party libraries. Native builds use the system's packages; the Windows builds use the Win32 API
# for what the POSIX build takes from these libraries.
find_package(Threads REQUIRED)
if(NOT WIN32)
  find_package(ICU 72 REQUIRED COMPONENTS uc i18n data)
endif()
