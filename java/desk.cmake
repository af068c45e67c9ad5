# What runs on the desk alone, where Java is of today.
find_program(JAVAC javac REQUIRED NO_CMAKE_FIND_ROOT_PATH)
find_program(JAVADOC javadoc REQUIRED NO_CMAKE_FIND_ROOT_PATH)
# Both end before the VM's better compiler has been worth its time.
set(of_short_runs -J-XX:TieredStopAtLevel=1 -J-XX:+UseSerialGC)

# add_jar(NAME CLASSPATH SOURCES... [RESOURCES FILES...] [WITH FOLDERS...]): build/desk/java/NAME.jar,
# warnings being errors. The resources lie beside the classes of the package com.nuvik.NAME; what is
# in the folders is packed too.
function(add_jar name classpath)
    set(classes ${CMAKE_CURRENT_BINARY_DIR}/${name})
    set(archive ${CMAKE_BINARY_DIR}/java/${name}.jar)
    cmake_parse_arguments(PARSE_ARGV 2 jar "" "" "RESOURCES;WITH")
    set(copying "")
    if(jar_RESOURCES)
        set(copying COMMAND ${CMAKE_COMMAND} -E copy ${jar_RESOURCES} ${classes}/com/nuvik/${name})
    endif()
    string(REPLACE ":" ";" dependencies "${classpath}")
    add_custom_command(OUTPUT ${archive}
        COMMAND ${CMAKE_COMMAND} -E rm -rf ${classes}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${classes} ${CMAKE_BINARY_DIR}/java
        COMMAND ${JAVAC} ${of_short_runs} --release 11 -Xlint:all -Werror -d ${classes} -cp "${classpath}"
            ${jar_UNPARSED_ARGUMENTS}
        ${copying}
        COMMAND ${PYTHON} ${pack_jar} ${archive} ${classes} ${jar_WITH}
        DEPENDS ${jar_UNPARSED_ARGUMENTS} ${jar_RESOURCES} ${dependencies} ${pack_jar} VERBATIM)
    add_custom_target(${name}_jar ALL DEPENDS ${archive})
endfunction()

file(GLOB_RECURSE examples CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/examples/*.java)
list(REMOVE_ITEM examples ${device_examples})
file(GLOB_RECURSE pictures CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/examples/*.png)
add_jar(examples ${toolkit_jar}:${program_jar}:${device_examples_jar} ${examples}
    RESOURCES ${pictures} WITH ${CMAKE_CURRENT_BINARY_DIR}/device-examples)

# What applications are tested with, by docs/testing.md. Only its rule needs JUnit.
set(junit /usr/share/java/junit4.jar)
file(GLOB testing CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/testing/com/nuvik/testing/*.java)
add_jar(testing ${toolkit_jar}:${program_jar}:${junit} ${testing})

# The documentation of all that programs are written with. A gap in it, or a warning, is an error.
set(documentation ${CMAKE_BINARY_DIR}/java/documentation)
set(documented ${toolkit} ${program} ${testing} ${CMAKE_CURRENT_SOURCE_DIR}/overview.html)
add_custom_command(OUTPUT ${documentation}/index.html
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${documentation}
    COMMAND ${JAVADOC} ${of_short_runs} -quiet -notimestamp -Xdoclint:all -Werror -d ${documentation}
        -windowtitle zemvolt11 -overview ${CMAKE_CURRENT_SOURCE_DIR}/overview.html
        -classpath ${junit} ${toolkit} ${program} ${testing}
    DEPENDS ${documented} VERBATIM)
add_custom_target(documentation DEPENDS ${documentation}/index.html)
add_test(NAME every_native_has_javadoc
    COMMAND ${CMAKE_COMMAND} --build ${CMAKE_BINARY_DIR} --target documentation)

# What the checked mode adds to a program's class path.
file(GLOB_RECURSE checking CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/checking/*.java)
add_jar(checking "" ${checking})
