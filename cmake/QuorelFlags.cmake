# Compiler and linker flags of the whole tree, and where its products go.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")

# The build tree and an installed tree can both be moved as a whole.
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
set(CMAKE_INSTALL_RPATH "$ORIGIN;$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Kind of build" FORCE)
endif()
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")

find_program(QUOREL_CCACHE ccache)
if(QUOREL_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${QUOREL_CCACHE}")
endif()

add_library(quorel_flags INTERFACE)
target_compile_options(quorel_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
# A module that is closed leaves the process; symbols of GCC's unique kind would keep it there.
target_compile_options(quorel_flags INTERFACE $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)

if(QUOREL_SANITIZE)
    # For the whole tree: a library and its user must agree on the instrumentation.
    add_compile_options(-fsanitize=${QUOREL_SANITIZE} -fno-sanitize-recover=all
                        -fno-omit-frame-pointer)
    # The checks between two writes make the compiler see unset members, in <regex> for one.
    target_compile_options(quorel_flags INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
    add_link_options(-fsanitize=${QUOREL_SANITIZE})
else()
    # Calls inside a library are direct, those into another go through its table without a stub.
    target_compile_options(quorel_flags INTERFACE -fno-semantic-interposition -fno-plt)
    target_link_options(quorel_flags INTERFACE
        LINKER:--no-undefined,-z,now $<$<CONFIG:Release>:LINKER:-Bsymbolic-functions>)
endif()
if(CMAKE_BUILD_TYPE STREQUAL "Debug" OR QUOREL_SANITIZE)
    add_compile_definitions(_GLIBCXX_ASSERTIONS)
endif()
