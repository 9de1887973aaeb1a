# Debian packages: `cpack -G DEB` in a build configured for /usr writes
# three, named so that `apt install ./kestu_*.deb` takes them all:
#   kestu_runtime_*.deb  package kestu: libkestu.so.0 and libkestu-desktop.so.0,
#                        with the system libraries they link (found by
#                        dpkg-shlibdeps), the fonts the controls draw with, and
#                        the controls' manifest and toolbox icons (share/kestu)
#   kestu_dev_*.deb      package kestu-dev: headers, the link names, the CMake
#                        package (with its Desktop component) and pkg-config files
#   kestu_tools_*.deb    package kestu-tools: kestu-script, kestu-run, kestu-designer,
#                        kestu-copy, kestu-registry
set(CPACK_PACKAGE_NAME kestu)
set(CPACK_PACKAGE_VENDOR "Kestu")
set(CPACK_PACKAGE_CONTACT "Kestu developers <kestu@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Self-drawn visual controls and their host runtime")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL Runtime Development Tools)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://localhost/kestu")
execute_process(COMMAND dpkg --print-architecture OUTPUT_VARIABLE KESTU_DEB_ARCH
                OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
if(NOT KESTU_DEB_ARCH)
  set(KESTU_DEB_ARCH amd64)
endif()
set(kestu_exact "(= ${PROJECT_VERSION})")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME kestu)
set(CPACK_DEBIAN_RUNTIME_FILE_NAME kestu_runtime_${PROJECT_VERSION}_${KESTU_DEB_ARCH}.deb)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
# The controls' default faces map to Liberation Sans.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS "fonts-liberation2")
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION
    "Kestu controls: the run-time libraries\n The controls, their host runtime and real windows, and the\n controls' manifest and toolbox icons.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME kestu-dev)
set(CPACK_DEBIAN_DEVELOPMENT_FILE_NAME kestu_dev_${PROJECT_VERSION}_${KESTU_DEB_ARCH}.deb)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "kestu ${kestu_exact}")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
    "Kestu controls: development files\n Headers, find_package(Kestu COMPONENTS Desktop) and pkg-config files.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME kestu-tools)
set(CPACK_DEBIAN_TOOLS_FILE_NAME kestu_tools_${PROJECT_VERSION}_${KESTU_DEB_ARCH}.deb)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION utils)
# The tools link the package's own libraries, which dpkg-shlibdeps cannot
# place, and otherwise only what those already need (kestu-copy only libc).
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "kestu ${kestu_exact}, libc6")
set(CPACK_COMPONENT_TOOLS_DESCRIPTION
    "Kestu controls: tools\n kestu-script (test forms headless), kestu-run (open a form in a window),\n kestu-designer (design forms), kestu-copy (copy, split and join files) and kestu-registry (list the\n controls).")
include(CPack)
