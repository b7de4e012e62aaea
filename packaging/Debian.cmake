# The Debian package: scripts/package makes it and looks at it.

# Without these the program works, only less well; what it cannot run without is read from the files themselves.
set(raccomandati "")
file(STRINGS ${CMAKE_SOURCE_DIR}/scripts/pacchetti righe REGEX "^[a-z][^ ]* +run ")
foreach(riga ${righe})
    string(REGEX REPLACE " .*" "" pacchetto "${riga}")
    if(NOT pacchetto MATCHES "^lib")
        list(APPEND raccomandati ${pacchetto})
    endif()
endforeach()
list(JOIN raccomandati ", " CPACK_DEBIAN_PACKAGE_RECOMMENDS)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME velloro)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "${VELLORO_MANUTENTORE}")
set(CPACK_PACKAGE_VENDOR "The Velloro founders")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "editor for hand-written HTML pages")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Velloro edits the source of one HTML page at a time. It offers tags, attributes
and values while you type, checks the page against its knowledge base, inserts
ready-made fragments, and shows the page in a real browser engine while it is
written. Pages keep their encoding, and what was not touched stays as it was.
.
The check works from the command line too, for whole sites and for scripts.")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION web)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# CPack takes modules so near to /usr/lib for libraries of everybody and writes scripts that call ldconfig, unless scripts
# of these names are given; names without a file are passed over.
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_SOURCE_DIR}/conffiles nessuno/postinst nessuno/postrm)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS ${CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS})
set(CPACK_INSTALL_CMAKE_PROJECTS
    "${CMAKE_BINARY_DIR};Velloro;programma;/;${CMAKE_BINARY_DIR};Velloro;debian;/")
include(CPack)
