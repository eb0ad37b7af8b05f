# The library, static and shared, from one compilation of the same sources.

# Settings of every target of ours: the language, and the warnings when they are asked for. A consumer's
# targets never see the warnings.
function(vsa_own_target target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
  if(VSA_STRICT)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wformat=2
                                             -Wformat-security -Werror)
    # g++ 12 takes an assignment to a std::string for a copy onto itself (its PR 105651).
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
      target_compile_options(${target} PRIVATE -Wno-restrict)
    endif()
  endif()
endfunction()

# Only names marked VSA_API leave the shared library. Without interposition a call of an exported name stays
# a plain call inside, so that one set of objects serves both libraries at full speed.
file(GLOB_RECURSE vsa_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/*.cpp)
add_library(vsa_objects OBJECT ${vsa_sources})
vsa_own_target(vsa_objects)
target_include_directories(vsa_objects PRIVATE ${PROJECT_SOURCE_DIR}/src)
target_compile_options(vsa_objects PRIVATE -fno-semantic-interposition)
set_target_properties(vsa_objects PROPERTIES POSITION_INDEPENDENT_CODE ON CXX_VISIBILITY_PRESET hidden
                                             VISIBILITY_INLINES_HIDDEN ON)

function(vsa_add_library target kind)
  add_library(${target} ${kind} $<TARGET_OBJECTS:vsa_objects>)
  add_library(vsa::${target} ALIAS ${target})
  vsa_own_target(${target})
  target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src>
                                              $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/vsa>)
  set_target_properties(${target} PROPERTIES OUTPUT_NAME vsa LINKER_LANGUAGE CXX)
endfunction()

vsa_add_library(vsa STATIC)
if(VSA_BUILD_SHARED)
  vsa_add_library(vsa_shared SHARED)
  set_target_properties(vsa_shared PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
endif()
