# The build for the browser, by the toolkit that packaging/web/toolchain makes.
list(APPEND CMAKE_MODULE_PATH ${CMAKE_CURRENT_LIST_DIR}/Web)
# Exceptions as the browser knows them; the toolkit is built so too.
add_compile_options(-fwasm-exceptions)
add_link_options(-fwasm-exceptions
    # No code is made of texts, so that the page can forbid it.
    -sDYNAMIC_EXECUTION=0
    -sENVIRONMENT=web)
# Libraries of headers alone lie beside the toolkit.
include_directories(SYSTEM ${QT6_INSTALL_PREFIX}/include)
