# The floors of the program. Each is a static library that sees the headers of the floors below it and of no other, so
# that an include that goes up does not build: a floor's headers are reached only through the folder of forwarding
# headers that the floor itself publishes ("platform/RichTextBox.h").

add_library(velloro_opzioni INTERFACE)
target_compile_definitions(velloro_opzioni INTERFACE $<$<CONFIG:Dev>:QT_FORCE_ASSERTS> QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH
                                                     $<$<CONFIG:Release>:QT_NO_DEBUG>)
target_compile_options(velloro_opzioni INTERFACE -Wall -Wextra -Wpedantic)
if(VELLORO_WERROR)
    target_compile_options(velloro_opzioni INTERFACE -Werror)
endif()
if(VELLORO_SANITIZE)
    target_compile_options(velloro_opzioni INTERFACE -fsanitize=${VELLORO_SANITIZE} -fno-sanitize-recover=all
                                                     -fno-omit-frame-pointer)
    target_link_options(velloro_opzioni INTERFACE -fsanitize=${VELLORO_SANITIZE})
endif()
if(VELLORO_COVERAGE)
    target_compile_options(velloro_opzioni INTERFACE --coverage -fprofile-abs-path)
    target_link_options(velloro_opzioni INTERFACE --coverage)
endif()
include(${CMAKE_CURRENT_LIST_DIR}/Rinforzi.cmake)
target_link_libraries(velloro_opzioni INTERFACE velloro_rinforzi)

# velloro_piano(NAME FOLDER folder SOURCES a.h a.cpp ... LINK targets ...)
function(velloro_piano nome)
    cmake_parse_arguments(P "" "FOLDER" "SOURCES;LINK" ${ARGN})
    add_library(${nome} STATIC ${P_SOURCES})
    target_link_libraries(${nome} PUBLIC velloro_opzioni ${P_LINK})
    foreach(sorgente ${P_SOURCES})
        if(sorgente MATCHES "\\.h$")
            get_filename_component(intestazione ${sorgente} NAME)
            file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/piani/${nome}/${P_FOLDER}/${intestazione}
                 CONTENT "#include \"${CMAKE_CURRENT_SOURCE_DIR}/${sorgente}\"\n" @ONLY)
        endif()
    endforeach()
    target_include_directories(${nome} PUBLIC ${CMAKE_BINARY_DIR}/piani/${nome})
endfunction()

# velloro_test(NAME LINK targets ...): one Qt Test program NAME.cpp, run offscreen.
function(velloro_test nome)
    cmake_parse_arguments(P "" "" "SOURCES;LINK" ${ARGN})
    add_executable(${nome} ${nome}.cpp ${P_SOURCES})
    target_link_libraries(${nome} PRIVATE ${P_LINK} Qt6::Test)
    target_compile_definitions(${nome} PRIVATE CARTELLA_SORGENTI="${CMAKE_SOURCE_DIR}"
                                               CARTELLA_PROGRAMMA="${CMAKE_BINARY_DIR}/bin")
    add_test(NAME ${nome} COMMAND ${nome})
    set_tests_properties(${nome} PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8")
endfunction()
