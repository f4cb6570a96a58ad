# One static library per engine or plug-in module.
#
#   calvorn_add_module(<Name> DIR <folder> [DEPS <module>...] [PCH])
#
# Sources are every .cpp under <folder>/Private; <folder>/Public is the include root, as the
# engine's module layout has it, so headers are reached by their engine paths ("Dom/JsonObject.h").
# Globbing keeps module lists out of CMake files, so adding a file never touches the build scripts.
function(calvorn_add_module NAME)
  cmake_parse_arguments(ARG "PCH" "DIR" "DEPS;PRIVATE_DEPS" ${ARGN})
  file(GLOB_RECURSE SOURCES CONFIGURE_DEPENDS "${ARG_DIR}/Private/*.cpp")
  add_library(${NAME} STATIC ${SOURCES})
  target_include_directories(${NAME} PUBLIC "${ARG_DIR}/Public")
  if(EXISTS "${ARG_DIR}/Classes")
    target_include_directories(${NAME} PUBLIC "${ARG_DIR}/Classes")
  endif()
  target_include_directories(${NAME} PRIVATE "${ARG_DIR}/Private")
  target_compile_options(${NAME} PRIVATE ${CALVORN_WARNINGS})
  # Headless modules register classes and modules from static initialisers that nothing references
  # by name, so they are linked whole: an executable gets every object file of every module it uses.
  foreach(DEP IN LISTS ARG_DEPS)
    target_link_libraries(${NAME} PUBLIC "$<LINK_LIBRARY:WHOLE_ARCHIVE,${DEP}>")
  endforeach()
  if(ARG_PRIVATE_DEPS)
    target_link_libraries(${NAME} PRIVATE ${ARG_PRIVATE_DEPS})
  endif()
  calvorn_use_core_pch(${NAME})
endfunction()

# CoreMinimal.h is what nearly every file includes first; one PCH built by Core is reused everywhere.
function(calvorn_use_core_pch TargetName)
  if(TargetName STREQUAL "Core")
    target_precompile_headers(Core PRIVATE "$<$<COMPILE_LANGUAGE:CXX>:CoreMinimal.h>")
  else()
    target_precompile_headers(${TargetName} REUSE_FROM Core)
  endif()
endfunction()

#   calvorn_add_test_suite(<Name> DIR <folder> DEPS <module>...)
# One GoogleTest executable per folder of Tests/, registered case by case with CTest.
function(calvorn_add_test_suite NAME)
  cmake_parse_arguments(ARG "" "DIR" "DEPS" ${ARGN})
  file(GLOB_RECURSE SOURCES CONFIGURE_DEPENDS "${ARG_DIR}/*.cpp")
  add_executable(${NAME} ${SOURCES})
  foreach(DEP IN LISTS ARG_DEPS)
    target_link_libraries(${NAME} PRIVATE "$<LINK_LIBRARY:WHOLE_ARCHIVE,${DEP}>")
  endforeach()
  target_link_libraries(${NAME} PRIVATE GTest::gtest GTest::gtest_main GTest::gmock)
  target_compile_options(${NAME} PRIVATE ${CALVORN_WARNINGS})
  target_include_directories(${NAME} PRIVATE "${CMAKE_SOURCE_DIR}/Tests")
  calvorn_use_core_pch(${NAME})
  gtest_discover_tests(${NAME} DISCOVERY_MODE PRE_TEST)
endfunction()
