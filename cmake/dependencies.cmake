# The libraries that the platform's rooms stand on. Everything here is a Debian package that script/bootstrap installs.
# Programs that use the installed libraries link these too and include this file through find_package(lunabrook).
find_package(PkgConfig REQUIRED)
pkg_check_modules(LUNABROOK_ICU REQUIRED QUIET IMPORTED_TARGET icu-i18n icu-uc)
pkg_check_modules(LUNABROOK_EXPAT REQUIRED QUIET IMPORTED_TARGET expat)

# Shared libraries cost a process that lives for three milliseconds as much again in relocations and look-ups, ICU's most
# of all. A program with the property LUNABROOK_STATIC gets the archives, where they are installed; the others stay with
# the shared ones and link in no time.
function(lunabrook_library_or_archives name shared)
  foreach(archive ${ARGN})
    find_library(LUNABROOK_ARCHIVE_${archive} lib${archive}.a)
    mark_as_advanced(LUNABROOK_ARCHIVE_${archive})
    list(APPEND archives ${LUNABROOK_ARCHIVE_${archive}})
  endforeach()
  set(LUNABROOK_ARCHIVES ${LUNABROOK_ARCHIVES} ${archives} PARENT_SCOPE)
  if(NOT TARGET lunabrook::${name})
    add_library(lunabrook::${name} INTERFACE IMPORTED)
    target_link_libraries(lunabrook::${name} INTERFACE
      $<IF:$<BOOL:$<TARGET_PROPERTY:LUNABROOK_STATIC>>,${archives},${shared}>)
  endif()
endfunction()
lunabrook_library_or_archives(icu PkgConfig::LUNABROOK_ICU icui18n icuuc icudata)
lunabrook_library_or_archives(expat PkgConfig::LUNABROOK_EXPAT expat)

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
