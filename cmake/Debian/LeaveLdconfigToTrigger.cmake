# Run by CPack when it has made the packages: one with a library also got scripts that call
# ldconfig, which Debian leaves to the trigger alone.
foreach(package IN LISTS CPACK_PACKAGE_FILES)
  set(content ${package}.content)
  execute_process(COMMAND dpkg-deb --raw-extract ${package} ${content} COMMAND_ERROR_IS_FATAL ANY)
  if(EXISTS ${content}/DEBIAN/triggers)
    file(REMOVE ${content}/DEBIAN/postinst ${content}/DEBIAN/postrm)
    execute_process(COMMAND dpkg-deb --root-owner-group --build ${content} ${package}
      OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  endif()
  file(REMOVE_RECURSE ${content})
endforeach()
