# Sets `pageScripts` to the page's scripts in their order: main.js, which starts all, comes last. Run by
# itself, it prints them.
file(GLOB pageScripts ${CMAKE_CURRENT_LIST_DIR}/page/*.js)
set(main ${CMAKE_CURRENT_LIST_DIR}/page/main.js)
list(REMOVE_ITEM pageScripts ${main})
list(APPEND pageScripts ${main})
if(CMAKE_SCRIPT_MODE_FILE STREQUAL CMAKE_CURRENT_LIST_FILE)
  string(REPLACE ";" "\n" lines "${pageScripts}")
  message("${lines}")
endif()
