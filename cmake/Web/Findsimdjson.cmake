# The library as one source, compiled with the program's own flags.
find_file(simdjson_file simdjson.cpp PATHS ${QT6_INSTALL_PREFIX}/share/simdjson
    NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH REQUIRED)
cmake_path(GET simdjson_file PARENT_PATH simdjson_folder)
add_library(simdjson_source STATIC ${simdjson_file})
set_target_properties(simdjson_source PROPERTIES AUTOMOC OFF)
target_compile_options(simdjson_source PRIVATE -w)
target_include_directories(simdjson_source SYSTEM PUBLIC ${simdjson_folder})
add_library(simdjson::simdjson ALIAS simdjson_source)
set(simdjson_FOUND TRUE)
