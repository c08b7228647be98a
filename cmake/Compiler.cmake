# Every target of the project links this one for its language level and warnings.
add_library(VistraCompiler INTERFACE)
target_compile_features(VistraCompiler INTERFACE cxx_std_20 c_std_11)
target_compile_options(VistraCompiler INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow
  $<$<COMPILE_LANG_AND_ID:CXX,Clang>:-Wthread-safety>
  $<$<BOOL:${VISTRA_WARNINGS_AS_ERRORS}>:-Werror>)
# Large files and late dates also where `long` has 32 bits.
target_compile_definitions(VistraCompiler INTERFACE _FILE_OFFSET_BITS=64 _TIME_BITS=64)
target_include_directories(VistraCompiler INTERFACE ${PROJECT_SOURCE_DIR})

# What the shared library is made of is built for size, but for the files that every record passes
# through.
add_library(VistraLibraryCode INTERFACE)
target_compile_options(VistraLibraryCode INTERFACE $<$<CONFIG:Release>:-Os>)
function(vistra_build_for_speed)
  set_source_files_properties(${ARGN} PROPERTIES COMPILE_OPTIONS $<$<CONFIG:Release>:-O2>)
endfunction()

# The shared library is optimised as a whole, which takes nearly a quarter off its size. Its objects
# hold ordinary code as well, so that all other programs are linked as fast as ever.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  set(VISTRA_WHOLE_LIBRARY $<$<CONFIG:Release>:-flto=auto>)
  target_compile_options(VistraLibraryCode INTERFACE
    ${VISTRA_WHOLE_LIBRARY} $<$<CONFIG:Release>:-ffat-lto-objects>)
  target_link_options(VistraCompiler INTERFACE
    $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:-fno-lto>)
endif()

if(VISTRA_SANITIZE)
  add_compile_options(-fsanitize=${VISTRA_SANITIZE} -fno-omit-frame-pointer
    -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${VISTRA_SANITIZE})
endif()

# The third level adds a third to the size, and speed only where records are transformed; see there.
if(PROJECT_IS_TOP_LEVEL)
  string(REPLACE "-O3" "-O2" CMAKE_CXX_FLAGS_RELEASE "${CMAKE_CXX_FLAGS_RELEASE}")
  string(REPLACE "-O3" "-O2" CMAKE_C_FLAGS_RELEASE "${CMAKE_C_FLAGS_RELEASE}")
  set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
endif()

set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
