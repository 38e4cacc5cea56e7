# The few ways in which this project makes targets.

# kodms_add_optional_subdirectory(DIR): adds DIR when it has a CMakeLists.txt.
function(kodms_add_optional_subdirectory dir)
  if(EXISTS "${CMAKE_CURRENT_SOURCE_DIR}/${dir}/CMakeLists.txt")
    add_subdirectory(${dir})
  endif()
endfunction()

# kodms_stage_includes(TARGET NAME FOLDER...): an INTERFACE target whose only include folder
# holds links to the named top folders, so that anything else cannot be included.
function(kodms_stage_includes target name)
  set(stage "${CMAKE_BINARY_DIR}/stage/${name}")
  file(MAKE_DIRECTORY "${stage}")
  foreach(folder IN LISTS ARGN)
    file(CREATE_LINK "${PROJECT_SOURCE_DIR}/${folder}" "${stage}/${folder}"
         COPY_ON_ERROR SYMBOLIC)
  endforeach()
  add_library(${target} INTERFACE)
  target_include_directories(${target} INTERFACE "$<BUILD_INTERFACE:${stage}>")
endfunction()

# kodms_public_headers(TARGET): what our headers ask of whoever includes them: C++17, and that a
# compiler that would take another encoding for granted reads them as UTF-8, where they have texts.
function(kodms_public_headers target)
  target_compile_features(${target} INTERFACE cxx_std_17)
  target_compile_options(${target} INTERFACE $<$<CXX_COMPILER_ID:MSVC>:/utf-8>)
endfunction()

# kodms_add_service_module(NAME SOURCES... LINK ...): one folder of services/ as an object library.
function(kodms_add_service_module name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
  set(target kodms_service_${name})
  add_library(${target} OBJECT ${ARG_SOURCES})
  target_compile_definitions(${target} PRIVATE KODMS_SERVICES_BUILD)
  target_include_directories(${target} PRIVATE "${PROJECT_SOURCE_DIR}")
  target_link_libraries(${target} PRIVATE kodms_build_flags PUBLIC Qt5::Core Qt5::Sql ${ARG_LINK})
  set_property(GLOBAL APPEND PROPERTY KODMS_SERVICE_MODULES ${target})
endfunction()

# What the tests on PostgreSQL read to find their server.
set(KODMS_TEST_SERVER_FOLDER "${CMAKE_BINARY_DIR}/tests/postgres/running")
set(KODMS_TEST_SERVER "${KODMS_TEST_SERVER_FOLDER}/server")

# The zone of the factory. The C library of Windows knows zones by their difference only.
if(WIN32)
  set(KODMS_TEST_ZONE CST-8)
else()
  set(KODMS_TEST_ZONE Asia/Shanghai)
endif()

# The tests in which threads of ours meet: what ThreadSanitizer looks at.
set(KODMS_THREADED_TESTS "^(tasks|notices|disk|filestore|archive|search|common|ui)[.]|^e2e[.].*Download")
add_custom_target(kodms_threaded_tests)

# kodms_add_test(NAME [LONG] [TIMEOUT seconds] SOURCES... LINK...): one QtTest executable,
# registered with CTest under the label fast (or long). NAME is what it tests, MODULE.Class.
function(kodms_add_test name)
  cmake_parse_arguments(ARG "LONG" "TIMEOUT" "SOURCES;LINK" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}")
  target_link_libraries(${name} PRIVATE kodms_build_flags kodms_test_support Qt5::Test ${ARG_LINK})
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/tests")
  add_test(NAME ${name} COMMAND ${name})
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 120)
  endif()
  set(label fast)
  if(ARG_LONG)
    set(label long)
  endif()
  if(name MATCHES "${KODMS_THREADED_TESTS}" AND NOT ARG_LONG)
    list(APPEND label threads)
    add_dependencies(kodms_threaded_tests ${name})
  endif()
  # QtTest of itself ends every function after five minutes, however long the test may take.
  math(EXPR function_ms "${ARG_TIMEOUT} * 1000")
  # libmongoc keeps counters in shared memory under the number of its process, and complains when a
  # process that was killed has left some under the same number.
  set_tests_properties(${name} PROPERTIES
    LABELS "${label}" TIMEOUT ${ARG_TIMEOUT}
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;TZ=${KODMS_TEST_ZONE};QT_LOGGING_RULES=kodms.*.info=false;QTEST_FUNCTION_TIMEOUT=${function_ms};MONGOC_DISABLE_SHM=1")
endfunction()

# kodms_run_on_postgres([LONG] NAME...): runs the same executables once more, as NAME.postgres, on
# the server that the fixture postgres starts, one at a time: what readers of the change log read
# again depends on the transactions at work on the whole server, other databases' included. Called in
# the folder of the tests. LONG: not with every change, since there they take minutes.
function(kodms_run_on_postgres)
  if(NOT UNIX)
    return()
  endif()
  cmake_parse_arguments(ARG "LONG" "" "" ${ARGN})
  foreach(name IN LISTS ARG_UNPARSED_ARGUMENTS)
    if(TEST ${name}.postgres) # somebody asked before
      continue()
    endif()
    get_test_property(${name} LABELS labels)
    if(NOT name MATCHES "^search[.]") # the other engine has shown the threads of the rest already
      list(REMOVE_ITEM labels threads)
    endif()
    if(ARG_LONG)
      list(TRANSFORM labels REPLACE "^fast$" long)
    endif()
    get_test_property(${name} TIMEOUT timeout)
    math(EXPR timeout "3 * ${timeout}") # a server is asked over and over where a file is at hand
    math(EXPR function_ms "${timeout} * 1000")
    get_test_property(${name} ENVIRONMENT environment)
    list(TRANSFORM environment REPLACE "^QTEST_FUNCTION_TIMEOUT=.*" "QTEST_FUNCTION_TIMEOUT=${function_ms}")
    list(APPEND environment KODMS_TEST_ENGINE=postgres "KODMS_TEST_SERVER=${KODMS_TEST_SERVER}")
    add_test(NAME ${name}.postgres COMMAND ${name})
    set_tests_properties(${name}.postgres PROPERTIES
      LABELS "${labels};postgres" TIMEOUT ${timeout} ENVIRONMENT "${environment}"
      FIXTURES_REQUIRED postgres RESOURCE_LOCK postgres SKIP_RETURN_CODE 77)
  endforeach()
endfunction()

# kodms_run_only_on_postgres(NAME...): for tests of what the embedded engine does not have.
function(kodms_run_only_on_postgres)
  cmake_parse_arguments(ARG "LONG" "" "" ${ARGN})
  foreach(name IN LISTS ARG_UNPARSED_ARGUMENTS)
    get_test_property(${name} LABELS labels)
    get_test_property(${name} ENVIRONMENT environment)
    list(APPEND environment KODMS_TEST_ENGINE=postgres "KODMS_TEST_SERVER=${KODMS_TEST_SERVER}")
    set_tests_properties(${name} PROPERTIES
      LABELS "${labels};postgres" ENVIRONMENT "${environment}"
      FIXTURES_REQUIRED postgres RESOURCE_LOCK postgres SKIP_RETURN_CODE 77)
  endforeach()
endfunction()

# A test of the desks: the desk objects on the recording fakes.
function(kodms_add_desk_test name)
  kodms_add_test(${name} ${ARGN} LINK kodms_desk_objects kodms_fakes Qt5::Widgets Qt5::Network)
  target_compile_definitions(${name} PRIVATE KODMS_DESKS_STATIC)
endfunction()

# A test of the services: every service module, private classes in reach.
function(kodms_add_service_test name)
  get_property(modules GLOBAL PROPERTY KODMS_SERVICE_MODULES)
  kodms_add_test(${name} ${ARGN} LINK ${modules} Qt5::Widgets)
  target_compile_definitions(${name} PRIVATE KODMS_SERVICES_BUILD)
endfunction()

# A test of lower modules alone: kodms_add_module_test(NAME MODULES notices disk ... SOURCES ...).
function(kodms_add_module_test name)
  cmake_parse_arguments(ARG "LONG" "TIMEOUT" "MODULES;SOURCES;LINK" ${ARGN})
  list(TRANSFORM ARG_MODULES PREPEND kodms_service_)
  set(options)
  if(ARG_LONG)
    list(APPEND options LONG)
  endif()
  if(ARG_TIMEOUT)
    list(APPEND options TIMEOUT ${ARG_TIMEOUT})
  endif()
  kodms_add_test(${name} ${options} SOURCES ${ARG_SOURCES} LINK ${ARG_MODULES} ${ARG_LINK})
  target_compile_definitions(${name} PRIVATE KODMS_SERVICES_BUILD)
endfunction()

# A test of the product as it ships: both shared libraries.
function(kodms_add_e2e_test name)
  kodms_add_test(${name} ${ARGN} LINK kodms_desks kodms_services Qt5::Widgets)
endfunction()
