# A room is a folder and a target. Rooms stand on floors; a room links only rooms of lower floors.

if(QUOREL_TESTS)
    find_package(GTest REQUIRED)
    include(GoogleTest)
endif()

# Adds the rooms in these folders; a folder without a CMakeLists.txt is passed over.
function(quorel_add_rooms)
    foreach(folder IN LISTS ARGN)
        if(EXISTS "${CMAKE_CURRENT_SOURCE_DIR}/${folder}/CMakeLists.txt")
            add_subdirectory(${folder})
        endif()
    endforeach()
endfunction()

# Lists into `out` the files of the present room that match a pattern, without those in `test/` and
# in folders below that are rooms of their own.
function(_quorel_room_files out pattern)
    file(GLOB_RECURSE files CONFIGURE_DEPENDS RELATIVE "${CMAKE_CURRENT_SOURCE_DIR}" "${pattern}")
    file(GLOB_RECURSE inner CONFIGURE_DEPENDS RELATIVE "${CMAKE_CURRENT_SOURCE_DIR}"
         "CMakeLists.txt")
    list(REMOVE_ITEM inner "CMakeLists.txt")
    list(FILTER files EXCLUDE REGEX "(^|/)test/")
    foreach(room IN LISTS inner)
        cmake_path(GET room PARENT_PATH room)
        list(FILTER files EXCLUDE REGEX "^${room}/")
    endforeach()
    set(${out} ${files} PARENT_SCOPE)
endfunction()

# Stops unless every linked room exists and stands below `floor`.
function(_quorel_check_links target floor)
    foreach(link IN LISTS ARGN)
        get_property(below GLOBAL PROPERTY QUOREL_FLOOR_${link})
        if("${below}" STREQUAL "")
            message(FATAL_ERROR "Room ${target} links ${link}, which is no room below it")
        elseif(NOT below LESS floor)
            message(FATAL_ERROR
                "Room ${target} (floor ${floor}) links ${link} (floor ${below}): not below it")
        endif()
    endforeach()
endfunction()

# The test executable `<target>_test` from test/*.cpp, if there are any.
function(_quorel_room_tests target type private_dirs links externals)
    file(GLOB sources CONFIGURE_DEPENDS "test/*.cpp")
    if(NOT QUOREL_TESTS OR NOT sources)
        return()
    endif()
    set(test ${target}_test)
    add_executable(${test} ${sources})
    target_include_directories(${test} PRIVATE
        "${CMAKE_CURRENT_SOURCE_DIR}" ${private_dirs} "${CMAKE_CURRENT_SOURCE_DIR}/test")
    if(type STREQUAL "EXECUTABLE")
        add_dependencies(${test} ${target})
        target_link_libraries(${test} PRIVATE ${externals})
    else()
        target_link_libraries(${test} PRIVATE ${target})
    endif()
    target_link_libraries(${test} PRIVATE ${links} quorel_flags GTest::gmock GTest::gtest_main)
    target_compile_definitions(${test} PRIVATE
        QUOREL_SOURCE_DIR="${PROJECT_SOURCE_DIR}" QUOREL_BIN_DIR="${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
    target_compile_options(${test} PRIVATE -O0) # compiled more often than run
    set_target_properties(${test} PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/test")
    gtest_discover_tests(${test} DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 300)
endfunction()

# quorel_room(<target> FLOOR <n> [TYPE SHARED|MODULE|EXECUTABLE] [NAME <file name>]
#             [DIRS <subfolder>...] [LINKS <room>...] [EXTERNAL <target>...] [TEST_LINKS <room>...])
#
# Makes the present folder a room: all *.cpp in it and its subfolders, but for test/ and inner
# rooms. FLOOR is a number such as 3 or 3.1. DIRS are subfolders whose headers are public beside
# those at the room's root. EXTERNAL are targets from outside the tree, for the room's own use.
# TEST_LINKS are further rooms, of any floor, for its tests. A MODULE goes to bin/ as <NAME>.so and
# is linked by its own tests only. A library without sources becomes an INTERFACE library, a program
# without sources nothing.
#
# Tests have the macros QUOREL_SOURCE_DIR and QUOREL_BIN_DIR, paths without a closing slash.
function(quorel_room target)
    cmake_parse_arguments(PARSE_ARGV 1 ROOM "" "FLOOR;TYPE;NAME" "DIRS;LINKS;EXTERNAL;TEST_LINKS")
    if(ROOM_UNPARSED_ARGUMENTS OR "${ROOM_FLOOR}" STREQUAL "")
        message(FATAL_ERROR "quorel_room(${target}): FLOOR missing, or ${ROOM_UNPARSED_ARGUMENTS}")
    endif()
    if(NOT ROOM_TYPE)
        set(ROOM_TYPE SHARED)
    endif()
    _quorel_check_links(${target} ${ROOM_FLOOR} ${ROOM_LINKS})
    _quorel_room_files(sources "*.cpp")
    _quorel_room_files(headers "*.h")

    set(public_dirs "${CMAKE_CURRENT_SOURCE_DIR}")
    foreach(dir IN LISTS ROOM_DIRS)
        list(APPEND public_dirs "${CMAKE_CURRENT_SOURCE_DIR}/${dir}")
    endforeach()
    set(private_dirs)
    foreach(header IN LISTS headers)
        cmake_path(GET header PARENT_PATH dir)
        if(dir)
            list(APPEND private_dirs "${CMAKE_CURRENT_SOURCE_DIR}/${dir}")
        endif()
    endforeach()
    list(REMOVE_DUPLICATES private_dirs)

    set_property(GLOBAL APPEND PROPERTY QUOREL_ROOMS ${target})
    set_property(GLOBAL PROPERTY QUOREL_FLOOR_${target} ${ROOM_FLOOR})
    string(JOIN "|" line ${target} ${ROOM_FLOOR} "${CMAKE_CURRENT_SOURCE_DIR}" "${ROOM_DIRS}"
           "${ROOM_LINKS}" "${ROOM_TEST_LINKS}")
    set_property(GLOBAL APPEND_STRING PROPERTY QUOREL_ROOM_LINES "${line}\n")

    if(ROOM_TYPE STREQUAL "EXECUTABLE")
        if(NOT sources)
            return()
        endif()
        add_executable(${target} ${sources})
        target_include_directories(${target} PRIVATE ${public_dirs} ${private_dirs})
        target_link_libraries(${target} PRIVATE ${ROOM_LINKS} ${ROOM_EXTERNAL} quorel_flags)
        install(TARGETS ${target} RUNTIME)
    elseif(NOT sources)
        add_library(${target} INTERFACE)
        _quorel_public_dirs(${target} INTERFACE)
        target_link_libraries(${target} INTERFACE ${ROOM_LINKS})
    else()
        # A module is SHARED too, since its own tests link it.
        add_library(${target} SHARED ${sources})
        _quorel_public_dirs(${target} PUBLIC)
        target_include_directories(${target} PRIVATE ${private_dirs})
        target_link_libraries(${target} PUBLIC ${ROOM_LINKS} PRIVATE ${ROOM_EXTERNAL}
                              $<BUILD_INTERFACE:quorel_flags>)
        _quorel_name_library(${target} ${ROOM_TYPE} "${ROOM_NAME}")
    endif()
    if(NOT ROOM_TYPE STREQUAL "EXECUTABLE")
        _quorel_install_library(${target} ${ROOM_TYPE} "${ROOM_DIRS}")
    endif()
    _quorel_room_tests(${target} ${ROOM_TYPE} "${private_dirs}" "${ROOM_LINKS};${ROOM_TEST_LINKS}"
                       "${ROOM_EXTERNAL}")
endfunction()

# The room's public folders as include path, in the build tree and in an installed one.
macro(_quorel_public_dirs target scope)
    target_compile_features(${target} ${scope} cxx_std_20)
    target_include_directories(${target} ${scope} "$<BUILD_INTERFACE:${public_dirs}>"
                               "$<INSTALL_INTERFACE:include/quorel/${target}>")
endmacro()

# Libraries are libquorel_<target>.so in lib/, the module is <name>.so in bin/.
function(_quorel_name_library target type name)
    if(type STREQUAL "MODULE")
        set_target_properties(${target} PROPERTIES PREFIX "" OUTPUT_NAME "${name}"
            LIBRARY_OUTPUT_DIRECTORY "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
    else()
        set_target_properties(${target} PROPERTIES OUTPUT_NAME quorel_${target}
            VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
    endif()
endfunction()

# Installs a library with its public headers in a folder of its own; of a module the file alone.
function(_quorel_install_library target type dirs)
    if(type STREQUAL "MODULE")
        get_target_property(kind ${target} TYPE)
        if(NOT kind STREQUAL "INTERFACE_LIBRARY")
            install(TARGETS ${target} LIBRARY DESTINATION ${CMAKE_INSTALL_BINDIR})
        endif()
        return()
    endif()
    install(TARGETS ${target} EXPORT QuorelTargets)
    foreach(dir IN ITEMS "." ${dirs})
        file(GLOB headers CONFIGURE_DEPENDS "${dir}/*.h")
        install(FILES ${headers} DESTINATION include/quorel/${target})
    endforeach()
endfunction()

# Writes rooms.txt into the build tree, a line a room, for tools/check-rooms:
# target|floor|folder|public subfolders|links|links of its tests
function(quorel_finish_rooms)
    get_property(lines GLOBAL PROPERTY QUOREL_ROOM_LINES)
    file(CONFIGURE OUTPUT "${CMAKE_BINARY_DIR}/rooms.txt" CONTENT "${lines}" @ONLY)
endfunction()
