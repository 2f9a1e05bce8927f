# One place for what every room's library and every test program is built with.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
set(CMAKE_INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}:$ORIGIN")
option(BUILD_SHARED_LIBS "Build the rooms as shared libraries" ON)

add_library(VexFlags INTERFACE)
# No contraction: the same drawing gives the same bits in every build.
target_compile_options(
    VexFlags
    INTERFACE -ffp-contract=off
              -Wall
              -Wextra
              -Wpedantic
              -Wconversion
              -Wshadow
              -Woverloaded-virtual
              # Points are polymorphic values: nobody deletes one through a base class.
              $<$<CXX_COMPILER_ID:Clang>:-Wno-delete-non-abstract-non-virtual-dtor>
              $<$<BOOL:${VEX_WARNINGS_AS_ERRORS}>:-Werror>)

# vex_room(NAME target COMPONENT component FOLDERS folder... LINK library...)
# A library from all sources of the folders: a new class is a new file pair and nothing else.
function(vex_room)
    cmake_parse_arguments(ROOM "" "NAME;COMPONENT" "FOLDERS;LINK;PRIVATE" ${ARGN})
    set(sources)
    set(headers)
    foreach(folder IN LISTS ROOM_FOLDERS)
        file(GLOB found CONFIGURE_DEPENDS ${folder}/*.cpp)
        file(GLOB found_headers CONFIGURE_DEPENDS ${folder}/*.h)
        list(APPEND sources ${found})
        list(APPEND headers ${found_headers})
    endforeach()
    add_library(${ROOM_NAME} ${sources} ${headers})
    add_library(VexDbLib::${ROOM_NAME} ALIAS ${ROOM_NAME})
    target_include_directories(
        ${ROOM_NAME} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
                            $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/vexdblib>)
    target_compile_features(${ROOM_NAME} PUBLIC cxx_std_20)
    target_link_libraries(
        ${ROOM_NAME}
        PUBLIC ${ROOM_LINK}
        PRIVATE $<BUILD_INTERFACE:VexFlags> ${ROOM_PRIVATE})
    if(BUILD_SHARED_LIBS)
        # A call within a room is a direct one and may be inlined: nothing replaces the functions of
        # a library at run time.
        target_compile_options(${ROOM_NAME} PRIVATE -fno-semantic-interposition)
        target_link_options(${ROOM_NAME} PRIVATE -Wl,-Bsymbolic-functions)
    endif()
    set_target_properties(${ROOM_NAME} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION 0)
    set_property(GLOBAL APPEND PROPERTY VEX_COMPONENT_${ROOM_COMPONENT} ${ROOM_NAME})
    set_property(GLOBAL APPEND PROPERTY VEX_HEADERS_${ROOM_COMPONENT} ${headers})
endfunction()

# vex_test(NAME program LABEL label FOLDER folder LINK library...)
# A GoogleTest program from all sources of a folder, each of its tests a CTest of that label.
function(vex_test)
    cmake_parse_arguments(TEST "" "NAME;LABEL;FOLDER;TIMEOUT" "LINK" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS ${TEST_FOLDER}/*.cpp)
    if(NOT sources)
        return()
    endif()
    if(NOT TEST_TIMEOUT)
        set(TEST_TIMEOUT 120)
    endif()
    add_executable(${TEST_NAME} ${sources})
    target_link_libraries(${TEST_NAME} PRIVATE VexFlags ${TEST_LINK} GTest::gmock_main)
    target_precompile_headers(${TEST_NAME} PRIVATE <gtest/gtest.h> <gmock/gmock.h> <string> <vector>)
    gtest_discover_tests(
        ${TEST_NAME}
        DISCOVERY_MODE PRE_TEST
        PROPERTIES LABELS "${TEST_LABEL}" TIMEOUT ${TEST_TIMEOUT}
                   ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8")
endfunction()
