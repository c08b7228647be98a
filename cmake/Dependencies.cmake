# docs/architecture.md says of each what it does here and why it is not our own code.
find_package(PkgConfig REQUIRED)
find_package(Boost 1.74 REQUIRED)
find_package(utf8cpp 3.2 REQUIRED)
find_package(Threads REQUIRED)
# As an archive: in a host that has functions of these common names itself, those would be called in
# place of a shared library's.
find_library(LIBMD_ARCHIVE libmd.a REQUIRED)
pkg_check_modules(LIBPLIST REQUIRED IMPORTED_TARGET libplist-2.0)
# A host has its own idea of what a plain XCB is made of.
pkg_check_modules(VISTRA_XCB REQUIRED IMPORTED_TARGET xcb xcb-randr xau)
