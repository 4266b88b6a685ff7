# What `cmake --install` puts where (the executables' own places are named where they are made), and the two packages of
# `cpack -G DEB`: lunabrook is what people run, lunabrook-dev what other programs link.
include(CMakePackageConfigHelpers)

install(DIRECTORY resources/ DESTINATION ${CMAKE_INSTALL_DATADIR}/lunabrook PATTERN dbus EXCLUDE PATTERN systemd EXCLUDE)
install(FILES docs/lunabrook.1 docs/lunabrook-intents.1 docs/lunabrook-wyoming.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
# Shells look for a file of the command's name; zsh's knows all three, and stands elsewhere below /usr/local.
function(lunabrook_install_completion file destination suffix)
  install(FILES completion/${file} DESTINATION ${destination} RENAME lunabrook${suffix})
  foreach(program lunabrook-wyoming lunabrook-intents)
    set(link ${PROJECT_BINARY_DIR}/completion/${program}${suffix})
    file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/completion)
    file(CREATE_LINK lunabrook${suffix} ${link} SYMBOLIC)
    install(FILES ${link} DESTINATION ${destination})
  endforeach()
endfunction()
lunabrook_install_completion(lunabrook.bash ${CMAKE_INSTALL_DATADIR}/bash-completion/completions "")
lunabrook_install_completion(lunabrook.fish ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d .fish)
install(CODE "set(LUNABROOK_ZSH site-functions)
if(CMAKE_INSTALL_PREFIX STREQUAL \"/usr\")
  set(LUNABROOK_ZSH vendor-completions)
endif()")
install(FILES completion/_lunabrook DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/\${LUNABROOK_ZSH})
install(FILES CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES examples/avahi/lunabrook-wyoming.service DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples/avahi)

set(LUNABROOK_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/lunabrook)
set(LUNABROOK_BUNDLE ${CMAKE_INSTALL_DATADIR}/lunabrook)
configure_package_config_file(cmake/lunabrookConfig.cmake.in lunabrookConfig.cmake
                              INSTALL_DESTINATION ${LUNABROOK_CMAKE_DIR} PATH_VARS LUNABROOK_BUNDLE)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/lunabrookConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/lunabrookConfig.cmake ${PROJECT_BINARY_DIR}/lunabrookConfigVersion.cmake
              cmake/dependencies.cmake
        DESTINATION ${LUNABROOK_CMAKE_DIR} COMPONENT development)
install(EXPORT lunabrook FILE lunabrookTargets.cmake NAMESPACE lunabrook::
        DESTINATION ${LUNABROOK_CMAKE_DIR} COMPONENT development)

set(CPACK_PACKAGE_VENDOR "Lunabrook developers")
set(CPACK_PACKAGE_CONTACT "Lunabrook developers <developers@lunabrook.invalid>")
set(CPACK_COMPONENTS_ALL runtime development)
set(CPACK_STRIP_FILES ON)
# What starts the services names the executables' final paths, so files are staged below DESTDIR and not by prefix.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/compress_manual.cmake)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME lunabrook)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS tzdata)
# The command asks for a line with libedit where that is installed; a script never does.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_RECOMMENDS "libedit2, default-dbus-session-bus | dbus-session-bus")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SUGGESTS "systemd, avahi-daemon")
# The first line of each is its synopsis, which CPack otherwise takes from the project.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "spoken answers about last night's sleep
Reads the store that a sleep tracker fills each night and answers nine
questions about it, from readiness to tonight's bedtime, each with one
spoken sentence in the user's language: on the command line, to a voice
assistant in the home that speaks the Wyoming protocol, and as a service that
the session bus starts when somebody asks.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME lunabrook-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "lunabrook (= ${PROJECT_VERSION}), libicu-dev, libabsl-dev, libexpat1-dev, pkg-config")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "spoken answers about last night's sleep - development files
Headers, static libraries and the CMake package with which another C++
program answers the sleep intents itself.")

include(CPack)
