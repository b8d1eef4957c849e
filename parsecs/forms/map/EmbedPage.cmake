# Makes a C++ source of the page: cmake -DPAGE=FOLDER -DOUTPUT=FILE -P EmbedPage.cmake
# The page names its one script and its one style by their hashes, so that nothing else can run.
cmake_policy(SET CMP0053 NEW)

# The base64 text of a SHA-256 digest in hexadecimal digits, of which three make two letters.
function(to_base64 digits result)
  set(letters ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/)
  set(text)
  foreach(i RANGE 0 63 3)
    string(SUBSTRING "${digits}00" ${i} 3 triple)
    math(EXPR first "0x${triple} >> 6")
    math(EXPR second "0x${triple} & 63")
    string(SUBSTRING ${letters} ${first} 1 first)
    string(SUBSTRING ${letters} ${second} 1 second)
    string(APPEND text ${first}${second})
  endforeach()
  string(SUBSTRING ${text} 0 43 text)
  set(${result} "${text}=" PARENT_SCOPE)
endfunction()

file(READ ${PAGE}/map.css style)
set(script)
include(${CMAKE_CURRENT_LIST_DIR}/PageScripts.cmake)
foreach(file ${pageScripts})
  file(READ ${file} text)
  string(APPEND script "${text}\n")
endforeach()
file(READ ${PAGE}/map.html page)
foreach(part style script)
  set(${part} "\n${${part}}")
  string(SHA256 digits "${${part}}")
  to_base64(${digits} hash)
  string(REPLACE "{{${part}-hash}}" "sha256-${hash}" page "${page}")
  string(REPLACE "{{${part}}}" "${${part}}" page "${page}")
endforeach()

string(FIND "${page}" "{{data}}" data)
string(SUBSTRING "${page}" 0 ${data} head)
math(EXPR data "${data} + 8")
string(SUBSTRING "${page}" ${data} -1 tail)
file(WRITE ${OUTPUT} "#include \"parsecs/forms/map/MapFrame.h\"

namespace plugincs {

const std::string_view kMapHead = R\"page(${head})page\";
const std::string_view kMapTail = R\"page(${tail})page\";

}  // namespace plugincs
")
