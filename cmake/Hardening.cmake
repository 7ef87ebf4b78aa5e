# What makes a mistake in the program harder to use for others. Release builds have it throughout;
# tests/Hardening holds the flags themselves, and scripts/check-hardening a built program.
include(CheckCXXCompilerFlag)
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)

set(trellisport_hardening_compile
    -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3 -fstack-protector-strong)
# Each processor has its own guard of jumps and returns.
foreach(flag IN ITEMS -fstack-clash-protection -fcf-protection=full -mbranch-protection=standard)
    string(MAKE_C_IDENTIFIER "TRELLISPORT_HAS${flag}" known)
    check_cxx_compiler_flag(${flag} ${known})
    if(${known})
        list(APPEND trellisport_hardening_compile ${flag})
    endif()
endforeach()
set(trellisport_hardening_link
    LINKER:-z,relro LINKER:-z,now LINKER:-z,noexecstack LINKER:-z,separate-code)

if(CMAKE_BUILD_TYPE MATCHES "^(Release|MinSizeRel)$")
    set(CMAKE_POSITION_INDEPENDENT_CODE ON)
    add_compile_options(${trellisport_hardening_compile})
    add_link_options(${trellisport_hardening_link})
endif()
