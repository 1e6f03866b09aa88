# For compiling without linking: the third-party libraries as this system's own headers, which are the same on
# every platform. Only theirs: a folder of links keeps the rest of this system's headers out.
set(headers "${CMAKE_BINARY_DIR}/third-party")
file(MAKE_DIRECTORY "${headers}")
foreach(name date fmt nlohmann re2 sqlite3.h utf8proc.h)
    file(CREATE_LINK "/usr/include/${name}" "${headers}/${name}" SYMBOLIC)
endforeach()

foreach(name Threads::Threads date::date-tz fmt::fmt nlohmann_json::nlohmann_json PkgConfig::re2
             PkgConfig::sqlite3 PkgConfig::utf8proc)
    add_library(${name} INTERFACE IMPORTED)
    target_include_directories(${name} SYSTEM INTERFACE "${headers}")
endforeach()
