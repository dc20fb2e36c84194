# Compiler settings that every target of this project shares.
add_library(tessera_options INTERFACE)
target_include_directories(tessera_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(tessera_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual
  -Wcast-align -Wimplicit-fallthrough -Werror)
target_compile_definitions(tessera_options INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_NO_URL_CAST_FROM_STRING
  QT_DISABLE_DEPRECATED_BEFORE=0x060400
  TESSERA_VERSION="${PROJECT_VERSION}")

# What is released checks itself at run time and leaves nothing writable that
# need not be. The sanitizers have checks of their own, which these would hide.
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)
if(NOT TESSERA_SANITIZE AND NOT TESSERA_FUZZ)
  set(fortify 2)
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_GREATER_EQUAL 12)
    set(fortify 3)
  endif()
  set(hardened -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=${fortify} -D_GLIBCXX_ASSERTIONS
    -fstack-protector-strong -fstack-clash-protection)
  if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64|i[3-6]86)$")
    list(APPEND hardened -fcf-protection)
  endif()
  target_compile_options(tessera_options INTERFACE "$<$<CONFIG:Release>:${hardened}>")
  target_link_options(tessera_options INTERFACE
    "$<$<CONFIG:Release>:-Wl,-z,relro,-z,now,-z,noexecstack,-z,defs>")

  # A start reads less: code that nothing calls is left out, the rest is not made larger for a
  # little speed that no window shows (-O3), and addresses to set right are listed in short.
  include(CheckLinkerFlag)
  check_linker_flag(CXX -Wl,-z,pack-relative-relocs packs_relocations)
  target_compile_options(tessera_options INTERFACE
    "$<$<CONFIG:Release>:-O2;-ffunction-sections;-fdata-sections>")
  target_link_options(tessera_options INTERFACE
    "$<$<CONFIG:Release>:-Wl,--gc-sections$<$<BOOL:${packs_relocations}>:,-z,pack-relative-relocs>>")
endif()
if(TESSERA_SANITIZE)
  set(sanitizers -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_compile_options(tessera_options INTERFACE ${sanitizers})
  target_link_options(tessera_options INTERFACE ${sanitizers})
endif()
if(TESSERA_FUZZ)
  set(fuzzers -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all
    -fno-omit-frame-pointer)
  target_compile_options(tessera_options INTERFACE ${fuzzers})
  target_link_options(tessera_options INTERFACE ${fuzzers})
endif()

# tessera_library(name needed...): a static library whose sources the rooms add.
function(tessera_library name)
  add_library(${name} STATIC)
  target_link_libraries(${name} PUBLIC tessera_options ${ARGN})
  # A header that a room adds has to be looked at by moc: only the lists tell of it.
  file(GLOB rooms ${PROJECT_SOURCE_DIR}/*/CMakeLists.txt)
  set_target_properties(${name} PROPERTIES AUTOGEN_TARGET_DEPENDS "${rooms}")
endfunction()
