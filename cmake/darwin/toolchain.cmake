# Compiles for macOS on arm64 from another system. scripts/check-darwin puts the compiler's wrappers into the
# build folder.
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_PROCESSOR arm64)
set(CMAKE_C_COMPILER "${CMAKE_BINARY_DIR}/tools/cc")
set(CMAKE_CXX_COMPILER "${CMAKE_BINARY_DIR}/tools/c++")
set(CMAKE_AR "${CMAKE_BINARY_DIR}/tools/ar" CACHE FILEPATH "")
set(CMAKE_RANLIB "${CMAKE_BINARY_DIR}/tools/ranlib" CACHE FILEPATH "")
set(CMAKE_INSTALL_NAME_TOOL "/bin/false" CACHE FILEPATH "")
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE NEVER)
