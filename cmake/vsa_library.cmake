# The library, static and shared, and functions that define targets. Both libraries are linked from the same object
# files.

# vsa_own_target(TARGET): sets the language of one of our targets, and its warnings if VSA_STRICT is set. Targets that
# link with the library do not inherit the warnings.
function(vsa_own_target target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
  if(VSA_STRICT)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wformat=2
                                             -Wformat-security -Werror)
    # g++ 12 wrongly reports assignments to a std::string (its PR 105651).
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
      target_compile_options(${target} PRIVATE -Wno-restrict)
    endif()
  endif()
endfunction()

# vsa_precompile(TARGET HEADER...) and vsa_precompile(TARGET REUSE_FROM OTHER): precompiles headers for the sources of a
# target. With ccache it does nothing, because ccache does not cache sources with precompiled headers.
function(vsa_precompile target)
  if(CMAKE_CXX_COMPILER_LAUNCHER MATCHES "ccache")
    return()
  elseif(ARGV1 STREQUAL "REUSE_FROM")
    target_precompile_headers(${target} ${ARGN})
  else()
    target_precompile_headers(${target} PRIVATE ${ARGN})
  endif()
  # g++ 12 does not treat <string> in a precompiled header as a system header, and wrongly reports bounds inside of
  # std::string. Builds without precompiled headers keep these warnings.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(${target} PRIVATE -Wno-array-bounds -Wno-stringop-overflow)
  endif()
endfunction()

# vsa_join_sources(TARGET): makes release builds without ccache compile the sources of a target in groups of four. The
# sources of the commands then take 61 s of processor time instead of 105 s. Names in the unnamed namespaces of a
# target's sources must differ. Other builds compile each source alone, so that each source must include what it uses.
# The library is not compiled in groups, so that programs get the objects that are tested.
function(vsa_join_sources target)
  if(CMAKE_BUILD_TYPE STREQUAL "Release" AND NOT CMAKE_CXX_COMPILER_LAUNCHER MATCHES "ccache")
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 4)
  endif()
endfunction()

# The layers of the library. Each layer is an object library, vsa_<layer>. tests/layers.sh lists which folder may
# include which. The shared library exports only the names that are marked VSA_API. Without semantic interposition,
# calls of exported names inside the library are direct calls. Thus both libraries use the same objects at full speed.
set(vsa_layers foundation diagnostics scene model reader api write syntax)
file(GLOB_RECURSE vsa_foundation_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/foundation/*.cpp)
file(GLOB_RECURSE vsa_diagnostics_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/diagnostics/*.cpp)
file(GLOB vsa_scene_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/scene/*.cpp)
file(GLOB_RECURSE vsa_model_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/scene/model/*.cpp)
file(GLOB_RECURSE vsa_reader_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/vsa/*.cpp)
file(GLOB_RECURSE vsa_api_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/api/*.cpp)
file(GLOB_RECURSE vsa_write_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/write/*.cpp)
file(GLOB_RECURSE vsa_syntax_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/syntax/*.cpp)

foreach(layer IN LISTS vsa_layers)
  add_library(vsa_${layer} OBJECT ${vsa_${layer}_sources})
  vsa_own_target(vsa_${layer})
  target_include_directories(vsa_${layer} PRIVATE ${PROJECT_SOURCE_DIR}/include ${PROJECT_SOURCE_DIR}/src)
  target_compile_options(vsa_${layer} PRIVATE -fno-semantic-interposition)
  set_target_properties(vsa_${layer} PROPERTIES POSITION_INDEPENDENT_CODE ON CXX_VISIBILITY_PRESET hidden
                                                VISIBILITY_INLINES_HIDDEN ON)
  # Precompiled headers make ./dev test faster, which compiles everything: back_links.cpp takes 0.5 s instead of 0.8 s.
  if(VSA_BUILD_TESTS AND layer STREQUAL "foundation")
    vsa_precompile(vsa_${layer} <algorithm> <cstdint> <functional> <memory> <optional> <string> <string_view> <vector>)
  elseif(VSA_BUILD_TESTS)
    vsa_precompile(vsa_${layer} REUSE_FROM vsa_foundation)
  endif()
endforeach()
set(vsa_layer_objects ${vsa_layers})
list(TRANSFORM vsa_layer_objects REPLACE "(.+)" "$<TARGET_OBJECTS:vsa_\\1>")

# vsa_check_layer(LAYER BELOW...): checks that a layer can be linked with only the layers below it. The model and the
# reader depend on the interface of the scene, but not on each other.
function(vsa_check_layer layer)
  list(TRANSFORM ARGV REPLACE "(.+)" "$<TARGET_OBJECTS:vsa_\\1>" OUTPUT_VARIABLE objects)
  add_library(vsa_check_${layer} MODULE ${objects})
  set_target_properties(vsa_check_${layer} PROPERTIES LINKER_LANGUAGE CXX)
  target_link_options(vsa_check_${layer} PRIVATE -Wl,-z,defs)
endfunction()
if(VSA_TEST_TREE AND VSA_BUILD_TESTS)
  vsa_check_layer(foundation)
  vsa_check_layer(diagnostics foundation)
  vsa_check_layer(scene foundation)
  vsa_check_layer(model scene diagnostics foundation)
  vsa_check_layer(reader scene diagnostics foundation)
  vsa_check_layer(api reader model scene diagnostics foundation)
  vsa_check_layer(write api reader model scene diagnostics foundation)
  vsa_check_layer(syntax api reader model scene diagnostics foundation)
endif()

function(vsa_add_library target kind)
  add_library(${target} ${kind} ${vsa_layer_objects})
  add_library(vsa::${target} ALIAS ${target})
  vsa_own_target(${target})
  target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
                                              $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  set_target_properties(${target} PROPERTIES OUTPUT_NAME vsa LINKER_LANGUAGE CXX)
endfunction()

vsa_add_library(vsa STATIC)
if(VSA_BUILD_SHARED)
  vsa_add_library(vsa_shared SHARED)
  set_target_properties(vsa_shared PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
endif()

# The internal headers, for tests, benchmarks and fuzzers. Tools and examples use only public headers.
add_library(vsa_internal INTERFACE)
target_include_directories(vsa_internal INTERFACE ${PROJECT_SOURCE_DIR}/src)
