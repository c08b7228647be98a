# What is installed, in three components: `runtime` for programs that use the library,
# `development` for building them, and `tools`. Every file finds the others from where it lies, so
# that an installation may be moved.
include(CMakePackageConfigHelpers)

set(PACKAGE_FOLDER ${CMAKE_INSTALL_LIBDIR}/cmake/LogSession)
set(AGENT_FOLDER ${CMAKE_INSTALL_LIBDIR}/LogSession)
configure_package_config_file(LogSession/LogSessionConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/LogSessionConfig.cmake
  INSTALL_DESTINATION ${PACKAGE_FOLDER} PATH_VARS AGENT_FOLDER)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/LogSessionConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(EXPORT LogSessionTargets NAMESPACE LogSession:: DESTINATION ${PACKAGE_FOLDER}
  COMPONENT development)
install(FILES
  ${CMAKE_CURRENT_BINARY_DIR}/LogSessionConfig.cmake
  ${CMAKE_CURRENT_BINARY_DIR}/LogSessionConfigVersion.cmake
  DESTINATION ${PACKAGE_FOLDER} COMPONENT development)

set(PC_FOLDER ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH PREFIX_FROM_PC ${PC_FOLDER} ${CMAKE_INSTALL_PREFIX})
file(RELATIVE_PATH INCLUDES_FROM_PC ${PC_FOLDER} ${CMAKE_INSTALL_FULL_INCLUDEDIR})
configure_file(LogSession/LogSession.pc.in LogSession.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/LogSession.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

# Without an agent nothing is recorded: a developer who has none yet takes the sample. It may be
# missing, where the library alone was built.
if(TARGET LogTransport2)
  get_target_property(AGENT_PROGRAM_FOLDER LogTransport2 RUNTIME_OUTPUT_DIRECTORY)
  cmake_path(GET AGENT_PROGRAM_FOLDER PARENT_PATH AGENT_CONTENTS)
  set(AGENT_DESTINATION ${AGENT_FOLDER}/LogTransport2.app/Contents)
  install(TARGETS LogTransport2 DESTINATION ${AGENT_DESTINATION}/MacOS COMPONENT development
    OPTIONAL)
  install(FILES ${AGENT_CONTENTS}/Info.plist DESTINATION ${AGENT_DESTINATION}
    COMPONENT development)
  install(FILES ${AGENT_CONTENTS}/Resources/LogTransport2.cfg
    DESTINATION ${AGENT_DESTINATION}/Resources COMPONENT development)
endif()

# One page tells of the whole library; each of its functions leads there.
file(STRINGS LogSession/UTLogData.h FUNCTIONS REGEX "^UT_EXPORT")
list(TRANSFORM FUNCTIONS REPLACE "^[^(]* (UT[A-Za-z]+)\\(.*" "\\1")
foreach(function IN LISTS FUNCTIONS)
  file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/man/${function}.3 ".so man3/LogSession.3\n")
endforeach()
list(TRANSFORM FUNCTIONS REPLACE ".+" "${CMAKE_CURRENT_BINARY_DIR}/man/\\0.3"
  OUTPUT_VARIABLE FUNCTION_PAGES)
install(FILES LogSession/man/LogSession.3 ${FUNCTION_PAGES}
  DESTINATION ${CMAKE_INSTALL_MANDIR}/man3 COMPONENT development)

if(VISTRA_BUILD_TOOLS)
  install(TARGETS vistra COMPONENT tools)
  file(GLOB TOOL_PAGES CONFIGURE_DEPENDS Tools/vistra/man/*.1)
  install(FILES ${TOOL_PAGES} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tools)
  # The completion is looked up by the name of the command.
  install(FILES Tools/vistra/completion/vistra.bash RENAME vistra OPTIONAL
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT tools)
endif()
