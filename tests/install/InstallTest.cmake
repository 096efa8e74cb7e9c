# One step of the install tests, run by CTest as `cmake -DSTEP=... -P InstallTest.cmake`
# with BUILD_DIR, SOURCE_DIR, WORK_DIR (this step's own folder) and PREFIX set; the
# programs run from WORK_DIR, away from the build and the source tree.
cmake_minimum_required(VERSION 3.25)

function(run)
    execute_process(COMMAND ${ARGN} WORKING_DIRECTORY ${WORK_DIR} RESULT_VARIABLE status
                    OUTPUT_VARIABLE out ERROR_VARIABLE err)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "${ARGN}\nexited with ${status}\n${out}${err}")
    endif()
    set(out "${out}" PARENT_SCOPE)
endfunction()

function(expect_in text)
    foreach(wanted ${ARGN})
        string(FIND "${text}" "${wanted}" at)
        if(at EQUAL -1)
            message(FATAL_ERROR "'${wanted}' missing from:\n${text}")
        endif()
    endforeach()
endfunction()

file(REMOVE_RECURSE ${WORK_DIR})
file(MAKE_DIRECTORY ${WORK_DIR})

if(STEP STREQUAL "tree")
    file(REMOVE_RECURSE ${PREFIX})
    run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${PREFIX})
    # Nothing installed may lean on the build tree.
    file(GLOB_RECURSE binaries ${PREFIX}/bin/* ${PREFIX}/lib/*.so)
    if(NOT binaries MATCHES "/lib/ztodpds/ztodpds.so")
        message(FATAL_ERROR "no plug-in in the private folder: ${binaries}")
    endif()
    foreach(manual share/man/man1/pdsreview.1 share/bash-completion/completions/pdsreview)
        if(NOT EXISTS ${PREFIX}/${manual})
            message(FATAL_ERROR "${manual} is not installed")
        endif()
    endforeach()
    foreach(binary ${binaries})
        file(STRINGS ${binary} leaks REGEX "${BUILD_DIR}/bin")
        if(leaks)
            message(FATAL_ERROR "${binary} names the build tree")
        endif()
    endforeach()
elseif(STEP STREQUAL "open")
    # The installed sample review gives the build tree's JSON, but for where it lies.
    run(${BUILD_DIR}/bin/pdsreview --json open ${SOURCE_DIR}/examples/plant/plant.dri)
    string(REPLACE "${SOURCE_DIR}/examples" "EXAMPLES" built "${out}")
    run(${PREFIX}/bin/pdsreview --json open ${PREFIX}/share/ztodpds/examples/plant/plant.dri)
    string(REPLACE "${PREFIX}/share/ztodpds/examples" "EXAMPLES" installed "${out}")
    if(NOT installed STREQUAL built)
        file(WRITE ${WORK_DIR}/built.json "${built}")
        file(WRITE ${WORK_DIR}/installed.json "${installed}")
        message(FATAL_ERROR "the installed review differs: diff ${WORK_DIR}/*.json")
    endif()
    # The installed checker finds nothing in the installed sample.
    run(${PREFIX}/bin/pdscheck ${PREFIX}/share/ztodpds/examples/plant/plant.dri)
elseif(STEP STREQUAL "version")
    foreach(program pdsreview pdscheck)
        run(${PREFIX}/bin/${program} --version)
        if(NOT out STREQUAL "${program} ${VERSION}\n")
            message(FATAL_ERROR "${program} --version printed '${out}'")
        endif()
    endforeach()
elseif(STEP STREQUAL "consumer")
    run(${CMAKE_COMMAND} -S ${SOURCE_DIR}/tests/install/consumer -B ${WORK_DIR} -G Ninja
        -DCMAKE_CXX_COMPILER=${CXX_COMPILER} -DCMAKE_PREFIX_PATH=${PREFIX}
        "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}")
    run(${CMAKE_COMMAND} --build ${WORK_DIR})
    run(${WORK_DIR}/consumer)
    expect_in("${out}" "ztodpds ${VERSION}: 4 plug-ins")
elseif(STEP STREQUAL "package")
    foreach(generator TGZ DEB)
        run(cpack -G ${generator} --config ${BUILD_DIR}/CPackConfig.cmake -B ${WORK_DIR})
    endforeach()
    set(package ${WORK_DIR}/ztodpds-${VERSION}-Linux)
    run(${CMAKE_COMMAND} -E tar tf ${package}.tar.gz)
    expect_in("${out}" bin/pdsreview bin/pdscheck lib/ztodpds/ztodpds.so lib/ztodpds/libztutil.so
              include/ztodpds/ztplugin/ZtOpPlugin.h share/ztodpds/examples/plant/plant.dri
              lib/cmake/ztodpds/ztodpdsConfig.cmake share/doc/ztodpds/LICENSE
              share/doc/ztodpds/copyright share/doc/ztodpds/changelog.gz)
    file(GLOB deb ${WORK_DIR}/ztodpds_${VERSION}_*.deb)
    run(dpkg-deb -c ${deb})
    expect_in("${out}" ./usr/bin/pdsreview ./usr/bin/pdscheck ./usr/lib/ztodpds/ztodpds.so
              ./usr/lib/ztodpds/libztplugin.so
              ./usr/lib/ztodpds/libztpdsdb.so ./usr/share/ztodpds/examples/plant/plant.db
              ./usr/include/ztodpds/ztplugin/ZtOpPlugin.h
              ./usr/share/doc/ztodpds/README.md ./usr/share/doc/ztodpds/formats.md
              ./usr/share/doc/ztodpds/copyright
              ./usr/share/doc/ztodpds/changelog.gz ./usr/share/lintian/overrides/ztodpds
              ./usr/share/ztodpds/examples/plant/plant.dri
              ./usr/share/man/man1/pdsreview.1.gz ./usr/share/man/man1/pdscheck.1.gz
              ./usr/share/bash-completion/completions/pdsreview
              ./usr/share/bash-completion/completions/pdscheck
              ./usr/lib/cmake/ztodpds/ztodpdsConfigVersion.cmake)
    # Debian's packages point to the system's copy of the licence.
    if(out MATCHES "LICENSE")
        message(FATAL_ERROR "the .deb holds a copy of the licence:\n${out}")
    endif()
    run(dpkg-deb -I ${deb})
    expect_in("${out}" "Package: ztodpds\n" "Version: ${VERSION}\n" "Maintainer: ztodpds"
              "Homepage: https://" "Description: plant design review")
    # Versioned dependencies, and no maintainer scripts: the private libraries need no
    # ldconfig.
    if(NOT out MATCHES "Depends: libc6 \\(>= [0-9.]+\\), [^\n]*libstdc\\+\\+6 \\(>= [0-9.]+\\)")
        message(FATAL_ERROR "unversioned dependencies:\n${out}")
    endif()
    foreach(library libsqlite3-0 libpq5)
        if(NOT out MATCHES "Depends: [^\n]*${library} \\(>= [0-9][^)]*\\)")
            message(FATAL_ERROR "no versioned dependency on ${library}:\n${out}")
        endif()
    endforeach()
    if(out MATCHES "postinst|postrm")
        message(FATAL_ERROR "the .deb has maintainer scripts:\n${out}")
    endif()
elseif(STEP STREQUAL "lintian")
    # What Debian's checker says of the package the package step made: no error and no
    # warning; what it is told to pass over, it passes over for a reason written beside.
    file(GLOB deb ${WORK_DIR}/../package/ztodpds_${VERSION}_*.deb)
    if(NOT deb)
        message(FATAL_ERROR "no .deb in ${WORK_DIR}/../package")
    endif()
    run(lintian --fail-on error,warning ${deb})
    if(out MATCHES "(^|\n)[EW]: ")
        message(FATAL_ERROR "lintian:\n${out}")
    endif()
else()
    message(FATAL_ERROR "unknown step '${STEP}'")
endif()
