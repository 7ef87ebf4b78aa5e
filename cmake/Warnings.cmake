# Our own code is free of warnings; libraries from outside come in as system headers.
add_library(trellisport_warnings INTERFACE)
target_compile_options(trellisport_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Werror
    -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align -Wcast-qual
    -Wformat=2 -Wimplicit-fallthrough -Wextra-semi -Wunused
    $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond -Wduplicated-branches -Wlogical-op>
    # At -O3, GCC 12 sees copies onto themselves in std::string's own code, where there are none.
    $<$<AND:$<CXX_COMPILER_ID:GNU>,$<CONFIG:Release>>:-Wno-restrict>)
target_compile_definitions(trellisport_warnings INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_NO_KEYWORDS
    QT_DISABLE_DEPRECATED_BEFORE=0x060400)
