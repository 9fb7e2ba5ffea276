# How a folder becomes a target.

# A folder of the core: its objects go into the one static library of the core.
#   tarvel_core_folder(<name> SOURCES <file>... [LINKS <target>...])
function(tarvel_core_folder name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINKS")
    add_library(tarvel_${name} OBJECT ${arg_SOURCES})
    target_include_directories(tarvel_${name} PUBLIC "${PROJECT_SOURCE_DIR}/src")
    target_link_libraries(tarvel_${name} PUBLIC ${arg_LINKS} PRIVATE tarvel_options)
endfunction()

# A folder above the core.
#   tarvel_library(<name> SOURCES <file>... [LINKS <target>...])
function(tarvel_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINKS")
    add_library(tarvel_${name} STATIC ${arg_SOURCES})
    target_include_directories(tarvel_${name} PUBLIC "${PROJECT_SOURCE_DIR}/src")
    target_link_libraries(tarvel_${name} PUBLIC ${arg_LINKS} PRIVATE tarvel_options)
endfunction()

# Makes such a library one of forms and objects of the toolkit.
function(tarvel_interface name)
    set_target_properties(tarvel_${name} PROPERTIES AUTOMOC ON AUTOUIC ON)
    # generated code is not held to the rules for written code
    target_include_directories(tarvel_${name} SYSTEM PRIVATE
        "${CMAKE_CURRENT_BINARY_DIR}/tarvel_${name}_autogen/include")
endfunction()

# A test program; every case in it becomes a test of ctest with the given label.
#   tarvel_test(<name> LABEL <unit|contract|session> SOURCES <file>... [LINKS <target>...]
#               [PROPERTIES <property> <value>...])
function(tarvel_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "LABEL" "SOURCES;LINKS;PROPERTIES")
    add_executable(${name} ${arg_SOURCES})
    target_include_directories(${name} PRIVATE
        "${PROJECT_SOURCE_DIR}/src" "${PROJECT_SOURCE_DIR}/tests/support")
    target_link_libraries(${name} PRIVATE ${arg_LINKS} GTest::gmock GTest::gtest_main tarvel_options)
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60
        PROPERTIES LABELS ${arg_LABEL} TIMEOUT 120 ${arg_PROPERTIES})
endfunction()

# Runs a test program of the toolkit as a whole on scaled screens as well.
#   tarvel_test_at_every_scale(<name> <platform plug-in and its options>)
function(tarvel_test_at_every_scale name platform)
    foreach(scale 1.5 2)
        add_test(NAME ${name}_at_scale_${scale} COMMAND ${name})
        set_tests_properties(${name}_at_scale_${scale} PROPERTIES LABELS unit TIMEOUT 120
            ENVIRONMENT "QT_QPA_PLATFORM=${platform};QT_SCALE_FACTOR=${scale}")
    endforeach()
endfunction()
