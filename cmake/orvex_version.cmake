# orvex_version: what the library's header says.
file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/../jni/orvex_991/orvex_991_version.h orvex_version
    REGEX "^#define ORVEX_991_VERSION_(MAJOR|MINOR|PATCH) [0-9]+$")
list(TRANSFORM orvex_version REPLACE "^.* " "")
list(JOIN orvex_version . orvex_version)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
    ${CMAKE_CURRENT_LIST_DIR}/../jni/orvex_991/orvex_991_version.h)
