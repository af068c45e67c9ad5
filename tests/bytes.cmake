# Every program of tests that calls the library runs once more with each block of the heap on pages of
# its own, where the touch of a byte behind a block, or of one that was given up, faults; with the desk's
# build and with the device's code (docs/proof.md).

# What does not run so, and why.
set(not_by_bytes_lifetimes_test "it runs so every day")
set(not_by_bytes_limits_test "it runs so every day")
set(not_by_bytes_sound_output_test "it runs so every day")

# add_bytes_test(NAME COMMAND...). What the code of older processors does differently touches no other
# bytes.
function(add_bytes_test name)
    set_property(GLOBAL APPEND PROPERTY programs_by_bytes ${name})
    if(DEFINED not_by_bytes_${name} OR name MATCHES "_armv4$")
        return()
    endif()
    add_test(NAME ${name}_bytes CONFIGURATIONS long COMMAND ${ARGN})
    # The names of callbacks that a display keeps for good would fill the heap in many rounds.
    set_tests_properties(${name}_bytes PROPERTIES
        ENVIRONMENT "ZEMVOLT_HEAP=pages;ZEMVOLT_LEAK_ROUNDS=20" LABELS bytes TIMEOUT 1800)
    if(name MATCHES "_armv4t$")
        set_tests_properties(${name}_bytes PROPERTIES FIXTURES_REQUIRED device_library)
    endif()
endfunction()

# What the table names is a test.
function(check_bytes_table)
    get_property(programs GLOBAL PROPERTY programs_by_bytes)
    get_directory_property(variables VARIABLES)
    list(FILTER variables INCLUDE REGEX "^not_by_bytes_")
    foreach(variable IN LISTS variables)
        string(REPLACE "not_by_bytes_" "" program ${variable})
        if(NOT program IN_LIST programs)
            message(FATAL_ERROR "${variable} names no program of tests")
        endif()
    endforeach()
endfunction()
