# The libraries that the platform folder stands on. Everything here is a Debian package that script/bootstrap installs.
find_package(PkgConfig REQUIRED)
pkg_check_modules(ICU REQUIRED IMPORTED_TARGET icu-i18n icu-uc)
pkg_check_modules(PLIST REQUIRED IMPORTED_TARGET libplist-2.0)

# Abseil's shared libraries are many and cost almost a millisecond at start, so its static archives are linked.
# Debian's CMake package names the shared ones only; the order is the linker's: users first.
add_library(lunabrook_absl_time INTERFACE)
foreach(archive time civil_time strings strings_internal base spinlock_wait int128 throw_delegate
                raw_logging_internal log_severity time_zone)
  find_library(ABSL_${archive}_ARCHIVE libabsl_${archive}.a REQUIRED)
  target_link_libraries(lunabrook_absl_time INTERFACE ${ABSL_${archive}_ARCHIVE})
endforeach()
