# Builds the sample host (examples/host) against the library as a host gets
# it, and runs it: from `cmake --install` of this build, or from the Debian
# packages that cpack makes of it; through find_package or pkg-config.
#   cmake -DBUILD=<build dir> -DSRC=<source dir> -DMODE=<mode> [-DTOOLCHAIN=<file>]
#         [-DEMULATOR=<program>] [-DRUN=OFF] -P HostCheck.cmake
# MODE: find_package, pkg-config, or deb (both ways, from the packages).
set(work ${BUILD}/host-check/${MODE})
file(REMOVE_RECURSE ${work})

function(step)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE out)
  if(NOT rc EQUAL 0)
    string(REPLACE ";" " " cmd "${ARGN}")
    message(FATAL_ERROR "host check (${MODE}): `${cmd}` failed (${rc}):\n${out}")
  endif()
endfunction()

# The sample host, run as a host runs: the DLL beside the program on Windows.
function(run program prefix)
  if(RUN STREQUAL "OFF")
    return()
  endif()
  get_filename_component(dir ${program} DIRECTORY)
  if(EXISTS ${prefix}/bin/oxlrt31.dll)
    file(COPY ${prefix}/bin/oxlrt31.dll DESTINATION ${dir})
  endif()
  execute_process(COMMAND ${EMULATOR} ${program} ${dir}/host.rec WORKING_DIRECTORY ${dir}
                  RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE out)
  message(STATUS "${program}:\n${out}")
  if(NOT rc EQUAL 0 OR NOT out MATCHES "host: ok")
    message(FATAL_ERROR "host check (${MODE}): ${program} gave ${rc}")
  endif()
endfunction()

function(with_find_package prefix tag)
  set(toolchain "")
  if(TOOLCHAIN)
    set(toolchain -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN})
  endif()
  step(${CMAKE_COMMAND} -S ${SRC}/examples/host -B ${work}/${tag} -G Ninja -DCMAKE_BUILD_TYPE=Release
       -DCMAKE_PREFIX_PATH=${prefix} -DOXL_CHECK_HEADERS=ON ${toolchain})
  step(${CMAKE_COMMAND} --build ${work}/${tag})
  file(GLOB program ${work}/${tag}/host ${work}/${tag}/host.exe)
  run(${program} ${prefix})
endfunction()

function(with_pkg_config prefix tag)
  set(ENV{PKG_CONFIG_PATH} ${prefix}/lib/pkgconfig)
  set(ENV{PKG_CONFIG_LIBDIR} ${prefix}/lib/pkgconfig)
  execute_process(COMMAND pkg-config --cflags --libs oxlrt31 RESULT_VARIABLE rc OUTPUT_VARIABLE flags
                  OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "host check (${MODE}): pkg-config finds no oxlrt31 in ${prefix}/lib/pkgconfig")
  endif()
  execute_process(COMMAND pkg-config --variable=libdir oxlrt31 OUTPUT_VARIABLE libdir
                  OUTPUT_STRIP_TRAILING_WHITESPACE)
  separate_arguments(flags UNIX_COMMAND "${flags}")
  file(MAKE_DIRECTORY ${work}/${tag})
  step(cc -std=c99 -Wall -Wextra -pedantic -Werror ${SRC}/examples/host/host.c ${flags}
       -Wl,-rpath,${libdir} -o ${work}/${tag}/host)
  run(${work}/${tag}/host ${prefix})
endfunction()

if(MODE STREQUAL "deb")
  file(MAKE_DIRECTORY ${work}/packages)
  step(cpack --config ${BUILD}/CPackConfig.cmake -B ${work}/packages)
  file(GLOB debs ${work}/packages/*.deb)
  list(LENGTH debs count)
  if(NOT count EQUAL 3)
    message(FATAL_ERROR "host check (deb): expected 3 packages, cpack made: ${debs}")
  endif()
  foreach(deb IN LISTS debs)
    step(dpkg-deb -x ${deb} ${work}/root)
  endforeach()
  with_pkg_config(${work}/root/usr pkg-config)
  with_find_package(${work}/root/usr find_package)
else()
  step(${CMAKE_COMMAND} --install ${BUILD} --prefix ${work}/root)
  if(MODE STREQUAL "pkg-config")
    with_pkg_config(${work}/root pkg-config)
  else()
    with_find_package(${work}/root find_package)
  endif()
endif()
