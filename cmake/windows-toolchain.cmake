# Cross compiler of the preset `windows`. Qt and the other libraries for 64-bit Windows are those
# that scripts/windows-sdk has built, or stand below KODMS_WINDOWS_SDK, a folder a library.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

if(NOT DEFINED ENV{KODMS_WINDOWS_SDK})
  execute_process(COMMAND "${CMAKE_CURRENT_LIST_DIR}/../scripts/windows-sdk" --where
                  OUTPUT_VARIABLE sdk OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  set(ENV{KODMS_WINDOWS_SDK} "${sdk}") # asked once, although this file is read many times
endif()
file(GLOB libraries LIST_DIRECTORIES ON "$ENV{KODMS_WINDOWS_SDK}/*")
set(CMAKE_PREFIX_PATH)
set(pkgconfig)
foreach(library IN LISTS libraries)
  file(REAL_PATH "${library}" library)
  list(APPEND CMAKE_PREFIX_PATH "${library}")
  list(APPEND pkgconfig "${library}/lib/pkgconfig")
endforeach()
list(JOIN pkgconfig ":" pkgconfig)
set(ENV{PKG_CONFIG_LIBDIR} "${pkgconfig}")
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32 ${CMAKE_PREFIX_PATH})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# lrelease is a program of the machine that builds.
file(GLOB linguist "/usr/lib/*/cmake/Qt5LinguistTools")
set(Qt5LinguistTools_DIR "${linguist}" CACHE PATH "")

# Windows 10 is the oldest that is still looked after.
add_compile_definitions(_WIN32_WINNT=0x0A00 UNICODE _UNICODE)

# Programs for Windows run here under wine.
set(CMAKE_CROSSCOMPILING_EMULATOR "${CMAKE_CURRENT_LIST_DIR}/../scripts/under-wine")
