# For compiling without linking: the third-party libraries as this system's own headers, which are the same on
# every platform. Only theirs: a folder of links keeps the rest of this system's headers out.
set(headers "${CMAKE_BINARY_DIR}/third-party")
file(MAKE_DIRECTORY "${headers}")
foreach(name date fmt nlohmann re2 sqlite3.h utf8proc.h)
    file(CREATE_LINK "/usr/include/${name}" "${headers}/${name}" SYMBOLIC)
endforeach()

# OpenSSL's come from two folders; what they say of this system's processor is true of the other's: 64 bits.
file(GLOB openssl /usr/include/openssl/*.h /usr/include/*-linux-gnu/openssl/*.h)
file(MAKE_DIRECTORY "${headers}/openssl")
foreach(header ${openssl})
    get_filename_component(name "${header}" NAME)
    file(CREATE_LINK "${header}" "${headers}/openssl/${name}" SYMBOLIC)
endforeach()

foreach(name Threads::Threads date::date-tz fmt::fmt nlohmann_json::nlohmann_json PkgConfig::crypto
             PkgConfig::re2 PkgConfig::sqlite3 PkgConfig::utf8proc)
    add_library(${name} INTERFACE IMPORTED)
    target_include_directories(${name} SYSTEM INTERFACE "${headers}")
endforeach()
