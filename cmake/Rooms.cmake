# SPDX-License-Identifier: GPL-3.0-or-later
# A room is one folder below src/ with one library target. A room links exactly the rooms that it may call,
# so an include against the direction of calls does not compile.

add_library(project_options INTERFACE)
target_compile_options(project_options INTERFACE -Wall -Wextra)
target_compile_definitions(project_options INTERFACE QT_NO_CAST_FROM_BYTEARRAY QT_DEPRECATED_WARNINGS)
if(QWD200_WERROR)
  target_compile_options(project_options INTERFACE -Werror)
endif()
if(QWD200_SANITIZE)
  target_compile_options(project_options INTERFACE -fsanitize=${QWD200_SANITIZE} -fno-omit-frame-pointer
                                                   -fno-sanitize-recover=undefined)
  target_link_options(project_options INTERFACE -fsanitize=${QWD200_SANITIZE})
endif()

# room(NAME SOURCES a.cpp a.h... LINKS lib... [AUTOGEN] [SHARED])
# Headers are included as "room/header.h".
function(room name)
  cmake_parse_arguments(ROOM "AUTOGEN;SHARED" "" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
  if(ROOM_SHARED)
    add_library(${name} SHARED ${ROOM_SOURCES})
  else()
    add_library(${name} STATIC ${ROOM_SOURCES})
  endif()
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(${name} PUBLIC ${ROOM_LINKS} PRIVATE project_options ${ROOM_PRIVATE_LINKS})
  if(ROOM_AUTOGEN)
    set_target_properties(${name} PROPERTIES AUTOMOC ON AUTOUIC ON AUTORCC ON)
  endif()
endfunction()
