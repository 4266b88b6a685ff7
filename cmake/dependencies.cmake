# The libraries that the platform's rooms stand on. Everything here is a Debian package that script/bootstrap installs.
# Programs that use the installed libraries link these too and include this file through find_package(lunabrook).
find_package(PkgConfig REQUIRED)
pkg_check_modules(LUNABROOK_ICU REQUIRED QUIET IMPORTED_TARGET icu-i18n icu-uc)
pkg_check_modules(LUNABROOK_PLIST REQUIRED QUIET IMPORTED_TARGET libplist-2.0)

# ICU's shared libraries cost a process that lives for three milliseconds as much again in relocations and look-ups. A
# program with the property LUNABROOK_STATIC gets the archives, where they are installed; the others stay with the
# shared ones and link in no time.
foreach(archive i18n uc data)
  find_library(LUNABROOK_ICU_ARCHIVE_${archive} libicu${archive}.a)
  mark_as_advanced(LUNABROOK_ICU_ARCHIVE_${archive})
  list(APPEND LUNABROOK_ICU_ARCHIVES ${LUNABROOK_ICU_ARCHIVE_${archive}})
endforeach()
if(NOT TARGET lunabrook::icu)
  add_library(lunabrook::icu INTERFACE IMPORTED)
  target_link_libraries(lunabrook::icu INTERFACE
    $<IF:$<BOOL:$<TARGET_PROPERTY:LUNABROOK_STATIC>>,${LUNABROOK_ICU_ARCHIVES},PkgConfig::LUNABROOK_ICU>)
endif()

# Abseil's shared libraries are many and cost almost a millisecond at start, so its static archives are linked.
# Debian's CMake package names the shared ones only; the order is the linker's: users first.
if(NOT TARGET lunabrook::absl_time)
  add_library(lunabrook::absl_time INTERFACE IMPORTED)
  foreach(archive time civil_time strings strings_internal base spinlock_wait int128 throw_delegate
                  raw_logging_internal log_severity time_zone)
    find_library(LUNABROOK_ABSL_${archive} libabsl_${archive}.a REQUIRED)
    mark_as_advanced(LUNABROOK_ABSL_${archive})
    target_link_libraries(lunabrook::absl_time INTERFACE ${LUNABROOK_ABSL_${archive}})
  endforeach()
endif()
