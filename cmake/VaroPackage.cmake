# The Debian package: cmake --build --preset release --target package makes
# varo_<version>_<arch>.deb of what `cmake --install` installs, placed under /usr. Its runtime
# dependencies are worked out by dpkg-shlibdeps from the programs' own libraries.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME varo)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY
    "output network designer for vacuum-tube HF power amplifiers")
set(CPACK_PACKAGE_DESCRIPTION
    "VARO designs the pi-L output network of a vacuum-tube HF power amplifier: component values,
voltage and current stresses, tank losses, the swept response and harmonics, a band plan
checked against the tube's capacitance and the variable capacitors, load ranges for real
antennas and coils as built. varo-cli runs the same calculations for scripts.")
set(CPACK_PACKAGE_CONTACT "VARO developers")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION hamradio)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# What the libraries cannot tell: Qt loads its display plugins at run time, and the screens are
# laid out for Liberation's metrics.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-qpa-plugins")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-liberation2")
set(CPACK_STRIP_FILES ON)
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
include(CPack)
