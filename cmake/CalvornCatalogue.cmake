# Embeds the engine catalogue (Headless/Catalogue/Data/*.json) into the Catalogue library.
#
# The data is committed; the build only turns it into a C++ source (raw string chunks) with
# Tools/Catalogue/embed_catalogue.py, so nothing is read from disk at run time and the build does
# not depend on the facts the data was generated from.
if(NOT TARGET Catalogue)
  return()
endif()

find_package(Python3 COMPONENTS Interpreter REQUIRED)

set(CALVORN_CATALOGUE_DATA_DIR "${PROJECT_SOURCE_DIR}/Headless/Catalogue/Data")
set(CALVORN_CATALOGUE_EMBED_SCRIPT "${PROJECT_SOURCE_DIR}/Tools/Catalogue/embed_catalogue.py")
set(CALVORN_CATALOGUE_EMBEDDED "${CMAKE_BINARY_DIR}/Generated/Catalogue/CatalogueEmbeddedData.cpp")
file(GLOB CALVORN_CATALOGUE_DATA_FILES CONFIGURE_DEPENDS
  "${CALVORN_CATALOGUE_DATA_DIR}/*.json" "${CALVORN_CATALOGUE_DATA_DIR}/Modules.txt")

add_custom_command(
  OUTPUT "${CALVORN_CATALOGUE_EMBEDDED}"
  COMMAND "${Python3_EXECUTABLE}" "${CALVORN_CATALOGUE_EMBED_SCRIPT}"
          "${CALVORN_CATALOGUE_DATA_DIR}" "${CALVORN_CATALOGUE_EMBEDDED}"
  DEPENDS "${CALVORN_CATALOGUE_EMBED_SCRIPT}" ${CALVORN_CATALOGUE_DATA_FILES}
  COMMENT "Embedding the engine catalogue"
  VERBATIM)

target_sources(Catalogue PRIVATE "${CALVORN_CATALOGUE_EMBEDDED}")
# The generated file is data, not code that could use the precompiled header.
set_source_files_properties("${CALVORN_CATALOGUE_EMBEDDED}" PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
target_include_directories(Catalogue SYSTEM PRIVATE ${RAPIDJSON_INCLUDE_DIR})
