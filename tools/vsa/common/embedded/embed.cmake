# vsa_embed(RESULT FUNCTION=FILE...): generates a source file and sets RESULT to its path. The source defines one
# function for each FILE, `std::string_view FUNCTION()` of namespace vsa_tools, which returns the bytes of the file. A
# build after a change of the file embeds its new bytes.
function(vsa_embed result)
  set(functions "")
  foreach(pair IN LISTS ARGN)
    string(REGEX MATCH "^([^=]+)=(.+)$" pair "${pair}")
    set(function ${CMAKE_MATCH_1})
    set(file ${CMAKE_MATCH_2})
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
    file(READ ${file} bytes HEX)
    string(REGEX REPLACE "(..)" "0x\\1," bytes "${bytes}")
    string(APPEND functions "static const unsigned char ${function}Bytes[] = {${bytes}};\n"
           "std::string_view ${function}() {\n"
           "  return {reinterpret_cast<const char*>(${function}Bytes), sizeof ${function}Bytes};\n}\n")
  endforeach()
  set(source ${CMAKE_CURRENT_BINARY_DIR}/embedded_files.cpp)
  file(CONFIGURE OUTPUT ${source} @ONLY CONTENT
       "#include \"tools/vsa/common/embedded/embedded_files.h\"\nnamespace vsa_tools {\n${functions}}\n")
  set(${result} ${source} PARENT_SCOPE)
endfunction()
