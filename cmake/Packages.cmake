# Debian packages, one of each component: `cpack --preset package` in a build of that preset.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vistra-logsession)
set(CPACK_PACKAGE_CONTACT ${VISTRA_MAINTAINER})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has a first line of its own
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR})
set(CPACK_COMPONENTS_ALL runtime development tools)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE
  GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/Debian/CompressDocuments.cmake)
set(CPACK_POST_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/Debian/LeaveLdconfigToTrigger.cmake)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE ${CPACK_PACKAGE_NAME})
set(CPACK_DEBIAN_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY >=)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)

string(TIMESTAMP BUILD_DATE "%a, %d %b %Y %H:%M:%S +0000" UTC)
configure_file(cmake/Debian/changelog.in changelog @ONLY)
function(describe_package component name section description)
  string(TOUPPER CPACK_DEBIAN_${component} prefix)
  set(${prefix}_PACKAGE_NAME ${name} PARENT_SCOPE)
  set(${prefix}_PACKAGE_SECTION ${section} PARENT_SCOPE)
  set(${prefix}_DESCRIPTION "usage tracking for desktop programs - ${description}" PARENT_SCOPE)
  install(FILES ${PROJECT_SOURCE_DIR}/cmake/Debian/copyright ${PROJECT_BINARY_DIR}/changelog
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${name} COMPONENT ${component})
endfunction()

describe_package(runtime liblogsession${PROJECT_VERSION_MAJOR} libs "library
LogSession records how a desktop program is used: each session of a program
becomes an XML document in a folder of the user's own, and only with that
user's consent. It opens no network connection and starts no thread.

This package holds the shared library that programs are linked with.")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/cmake/Debian/triggers)

describe_package(development liblogsession-dev libdevel "development files
LogSession records how a desktop program is used: each session of a program
becomes an XML document in a folder of the user's own.

This package holds the headers, the files for pkg-config and CMake, the manual
pages, and a sample agent that collects finished documents and sends nothing.")

describe_package(tools vistra-tools utils "command-line tools
LogSession records how a desktop program is used: each session of a program
becomes an XML document in a folder of the user's own.

This package holds the command vistra: it shows the recorded sessions, checks
and exports them, tells why recording is on or off, and turns it off.")

include(CPack)
