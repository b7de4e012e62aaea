# What release builds do so that a fault in reading somebody else's page stays a fault: overruns of buffers and of the
# stack end the program, its addresses cannot be guessed, its tables of functions cannot be written.
# scripts/package looks into the finished files for it.

include(CheckPIESupported)
check_pie_supported()
include(CheckCXXCompilerFlag)

add_library(velloro_rinforzi INTERFACE)
# Sanitizers bring checks of their own, which the C library's would hide.
if(CMAKE_BUILD_TYPE STREQUAL "Release" AND NOT VELLORO_SANITIZE)
    # Distributions set _FORTIFY_SOURCE by themselves, sometimes lower.
    target_compile_options(velloro_rinforzi INTERFACE
        -fstack-protector-strong -Wformat -Wformat-security -Werror=format-security
        -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3 -D_GLIBCXX_ASSERTIONS)
    # Not every processor and compiler has these.
    foreach(opzione -fstack-clash-protection -fcf-protection)
        string(MAKE_C_IDENTIFIER "VELLORO_HA${opzione}" trovata)
        check_cxx_compiler_flag(${opzione} ${trovata})
        if(${trovata})
            target_compile_options(velloro_rinforzi INTERFACE ${opzione})
        endif()
    endforeach()
    target_link_options(velloro_rinforzi INTERFACE LINKER:-z,relro,-z,now,-z,noexecstack)
endif()
