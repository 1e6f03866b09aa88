# What every target of this project shares: warnings as errors, the include root, sanitizers.

add_library(varnet_flags INTERFACE)
target_include_directories(varnet_flags INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_options(
    varnet_flags
    INTERFACE -Wall
              -Wextra
              -Wpedantic
              -Wnon-virtual-dtor
              -Woverloaded-virtual
              -Werror
              -fno-omit-frame-pointer)
# Not for what Qt's tools generate: a target that holds such code sets VARNET_GENERATED and asks for these
# file by file.
set(varnet_strict_options -Wshadow -Wconversion -Wsign-conversion)
target_compile_options(
    varnet_flags INTERFACE "$<$<NOT:$<BOOL:$<TARGET_PROPERTY:VARNET_GENERATED>>>:${varnet_strict_options}>")
# GCC 12 sees overlapping copies in ordinary text concatenation once it is optimised.
target_compile_options(varnet_flags INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
if(VARNET_SANITIZE)
    target_compile_options(varnet_flags INTERFACE -fsanitize=${VARNET_SANITIZE} -fno-sanitize-recover=all)
    target_link_options(varnet_flags INTERFACE -fsanitize=${VARNET_SANITIZE})
endif()
if(VARNET_FUZZ)
    # Clang sees libstdc++ 12 use a deprecated function of its own inside stable_sort.
    target_compile_options(varnet_flags INTERFACE -fsanitize=fuzzer-no-link -Wno-error=deprecated-declarations)
endif()
if(NOT APPLE)
    target_link_options(varnet_flags INTERFACE -fuse-ld=lld)
endif()

# varnet_library(NAME SOURCES ... LINK ...): a static library of ours; LINK is what its users see too.
function(varnet_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINK;PRIVATE_LINK" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_link_libraries(${name} PUBLIC varnet_flags ${ARG_LINK} PRIVATE ${ARG_PRIVATE_LINK})
endfunction()
