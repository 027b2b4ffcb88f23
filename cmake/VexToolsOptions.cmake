# Warnings and sanitizers for every target of the project.
add_library(vextools_options INTERFACE)
target_compile_options(vextools_options INTERFACE
  $<$<CXX_COMPILER_ID:GNU,Clang>:-Wall -Wextra -Wno-unused-parameter>)
if(VEXTOOLS_SANITIZE)
  target_compile_options(vextools_options INTERFACE -fsanitize=address,undefined -fno-omit-frame-pointer
                         $<$<BOOL:${VEXTOOLS_FUZZ}>:-fsanitize=fuzzer-no-link>
                         -fno-sanitize-recover=undefined)
  target_link_options(vextools_options INTERFACE -fsanitize=address,undefined)
endif()
if(WIN32)
  target_compile_definitions(vextools_options INTERFACE WIN32_LEAN_AND_MEAN NOMINMAX _WIN32_WINNT=0x0601)
  # One self-contained DLL and test programs that run without the MinGW runtime DLLs.
  target_link_options(vextools_options INTERFACE -static-libgcc -static-libstdc++ -static)
endif()
