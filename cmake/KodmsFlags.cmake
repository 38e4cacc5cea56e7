# One INTERFACE target carries the flags of our own code.
set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTORCC ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
set(CMAKE_INSTALL_RPATH "$ORIGIN/../lib")
if(WIN32)
  set(CMAKE_SHARED_LIBRARY_PREFIX "") # kodms_desks.dll, whatever the compiler's custom
endif()

add_library(kodms_build_flags INTERFACE)
target_compile_definitions(kodms_build_flags INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING
  QT_DEPRECATED_WARNINGS QT_USE_QSTRINGBUILDER)
if(WIN32) # <windows.h> without its macros min and max, and without what nobody uses
  target_compile_definitions(kodms_build_flags INTERFACE NOMINMAX WIN32_LEAN_AND_MEAN)
endif()
if(MSVC)
  # The sources are UTF-8, the standard is meant as it is written, and so is __cplusplus.
  target_compile_options(kodms_build_flags INTERFACE /utf-8 /permissive- /Zc:__cplusplus /W4 /WX)
else()
  target_compile_options(kodms_build_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor
    -Woverloaded-virtual -Werror)
endif()
if(KODMS_SANITIZE)
  target_compile_options(kodms_build_flags INTERFACE
    -fsanitize=${KODMS_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_link_options(kodms_build_flags INTERFACE -fsanitize=${KODMS_SANITIZE})
endif()
