# The device's varieties (emulator/README.md). Every program of tests that calls the library runs on
# each of them, with the desk's build and with the device's code (docs/proof.md). The tables of
# tests/disposal are of listeners and not of devices.
set(variety_handheld bar=26,turn=button)
set(variety_fine screen=480x640,dpi=192,bar=52)
set(variety_square screen=240x240)
set(variety_landscape screen=320x240,bar=26)
set(variety_bare cursors=wait,texts=none,pointer=stylus,files=one,panel=none)
set(varieties handheld fine square landscape bare)

# What the everyday suite runs of that: what such a variety changes most.
set(daily_emulator_test handheld fine square landscape bare)
set(daily_shell_test handheld fine square landscape bare)
set(daily_menu_test handheld fine square landscape bare)
set(daily_menu_painting_test handheld fine square landscape bare)
set(daily_menu_popup_test handheld fine square landscape bare)
set(daily_menu_bar_test handheld fine square landscape bare)
set(daily_accelerator_test handheld fine square landscape bare)
set(daily_file_dialog_test handheld fine square bare)
set(daily_file_dialog_request_test handheld fine square bare)
set(daily_services_test handheld fine bare)
set(daily_device_test fine landscape)
set(daily_font_test fine)
set(daily_sequence_test handheld)
set(daily_pointer_test bare)
set(daily_adjustable_test bare)
set(daily_scrollbar_test bare)
set(daily_color_test bare)
set(daily_error_test bare)
set(daily_control_proc_test bare)
set(daily_shell_test_armv4t fine)
set(daily_menu_test_armv4t handheld)
set(daily_menu_painting_test_armv4t handheld)
set(daily_menu_popup_test_armv4t handheld)
set(daily_menu_bar_test_armv4t handheld)
set(daily_accelerator_test_armv4t handheld)
set(daily_services_test_armv4t bare)
set(daily_java_tests handheld)

# What runs on the plain device only, and why.
set(plain_selftest "it tells in what a device differs from the plain one")

# add_variety_tests(NAME COMMAND...): the same test again on each variety. What the code of older
# processors does differently, no variety changes.
function(add_variety_tests name)
    set_property(GLOBAL APPEND PROPERTY programs_of_tests ${name})
    string(REGEX REPLACE "_armv4t?$" "" program ${name})
    if(DEFINED plain_${program} OR name MATCHES "_armv4$")
        return()
    endif()
    foreach(variety IN LISTS varieties)
        set(when CONFIGURATIONS long)
        if(variety IN_LIST daily_${name})
            set(when)
        endif()
        add_test(NAME ${name}_${variety} ${when} COMMAND ${ARGN})
        # No variety changes what is left behind in many rounds.
        set_tests_properties(${name}_${variety} PROPERTIES
            ENVIRONMENT "ZEMVOLT_DEVICE=${variety_${variety}};ZEMVOLT_SHARED=${variety};ZEMVOLT_LEAK_ROUNDS=20"
            LABELS "varieties;${variety}" TIMEOUT 600)
        if(name MATCHES "_armv4t$")
            set_tests_properties(${name}_${variety} PROPERTIES FIXTURES_REQUIRED device_library)
        endif()
    endforeach()
endfunction()

# What the tables name is a test.
function(check_variety_tables)
    get_property(programs GLOBAL PROPERTY programs_of_tests)
    get_directory_property(variables VARIABLES)
    list(FILTER variables INCLUDE REGEX "^(daily|plain)_")
    foreach(variable IN LISTS variables)
        string(REGEX REPLACE "^(daily|plain)_" "" program ${variable})
        if(NOT program IN_LIST programs)
            message(FATAL_ERROR "${variable} names no program of tests")
        endif()
    endforeach()
endfunction()
