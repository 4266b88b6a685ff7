# One interface target carries every flag; each of our targets links it.
add_library(lunabrook_flags INTERFACE)
target_compile_options(lunabrook_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
                                                 $<$<BOOL:${LUNABROOK_WERROR}>:-Werror>)
# GCC 12 sees overlapping copies where texts are joined and there are none (its bug 105651).
target_compile_options(lunabrook_flags INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
# The metrics compare single-precision results with double bounds: no fused or widened arithmetic.
target_compile_options(lunabrook_flags INTERFACE -ffp-contract=off)
# Many small relocations in a few words: fewer pages to read at the start of every process. Some linkers know the option
# and make what the loader refuses.
include(CheckCXXSourceRuns)
set(CMAKE_REQUIRED_LINK_OPTIONS -Wl,-z,pack-relative-relocs)
check_cxx_source_runs("int main() { return 0; }" LUNABROOK_CAN_PACK_RELOCATIONS)
unset(CMAKE_REQUIRED_LINK_OPTIONS)
if(LUNABROOK_CAN_PACK_RELOCATIONS)
  target_link_options(lunabrook_flags INTERFACE -Wl,-z,pack-relative-relocs)
endif()
if(LUNABROOK_SANITIZE)
  target_compile_definitions(lunabrook_flags INTERFACE LUNABROOK_SANITIZED)
  target_compile_options(lunabrook_flags INTERFACE -fsanitize=${LUNABROOK_SANITIZE} -fno-sanitize-recover=all
                                                   -fno-omit-frame-pointer)
  target_link_options(lunabrook_flags INTERFACE -fsanitize=${LUNABROOK_SANITIZE})
endif()
