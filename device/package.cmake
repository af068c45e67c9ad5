# What is carried to a device, in build/device/package.
find_program(GCAB gcab NO_CMAKE_FIND_ROOT_PATH)
if(NOT GCAB)
    message(FATAL_ERROR "There is no gcab; ./zemvolt device installs it")
endif()
set(ZEMVOLT_VM "\"\\Windows\\java.exe\" -classpath \"{classpath}\" {class}"
    CACHE STRING "The command line of the device's Java virtual machine, in the package's shortcuts")

set(package ${CMAKE_BINARY_DIR}/package)
set(package_jars zemvolt11.jar program.jar device-examples.jar selftest.jar)
list(TRANSFORM package_jars PREPEND ${CMAKE_BINARY_DIR}/java/)
set(java ${PROJECT_SOURCE_DIR}/java)
set(guide ${PROJECT_SOURCE_DIR}/docs/device.md)
file(CONFIGURE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/vm.txt CONTENT "@ZEMVOLT_VM@" @ONLY)
add_custom_command(OUTPUT ${package}/zemvolt11.zip ${package}/zemvolt11.cab
    COMMAND ${PYTHON} ${CMAKE_CURRENT_SOURCE_DIR}/package.py
        --library ${CMAKE_BINARY_DIR}/zemvolt11.dll
        --older-library ${CMAKE_BINARY_DIR}/armv4/zemvolt11.dll
        --jars ${package_jars} --java-library ${java}/library-1.1.txt --guide ${guide}
        --vm "${ZEMVOLT_VM}" ${package}
    DEPENDS ${CMAKE_BINARY_DIR}/zemvolt11.dll ${package_jars} ${guide}
        ${CMAKE_CURRENT_BINARY_DIR}/vm.txt ${CMAKE_CURRENT_SOURCE_DIR}/package.py
        ${java}/check_level.py ${java}/class_file.py ${java}/library-1.1.txt VERBATIM)
add_custom_target(device_package ALL DEPENDS ${package}/zemvolt11.zip)
