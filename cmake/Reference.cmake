# The target `reference` writes the reference of the public headers into reference/html.
find_package(Doxygen 1.9 REQUIRED)
configure_file(LogSession/Doxyfile.in Doxyfile @ONLY)
add_custom_target(reference COMMAND Doxygen::doxygen ${PROJECT_BINARY_DIR}/Doxyfile
  COMMENT "Writing the reference")
