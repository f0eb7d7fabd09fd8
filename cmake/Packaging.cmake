# The Debian package, by `cpack --preset deb`. What is installed is in src/ and data/.

set(doc_directory ${CMAKE_INSTALL_DATADIR}/doc/burnwick)
install(FILES packaging/copyright packaging/changelog README.md DESTINATION ${doc_directory})
install(FILES docs/security.md docs/status-item.md docs/teams.md DESTINATION ${doc_directory}/docs)

set(CPACK_PACKAGE_NAME burnwick)
set(CPACK_PACKAGE_VENDOR "The Burnwick developers")
set(CPACK_PACKAGE_CONTACT "The Burnwick developers <developers@burnwick.example>")
set(CPACK_PACKAGE_HOMEPAGE_URL ${BURNWICK_PRODUCT_BASE_URL})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "token usage, cost and quota of Claude Code at a glance")
set(CPACK_PACKAGE_DESCRIPTION
    "Burnwick sits in the status bar and shows how many tokens Claude Code has
burnt, what they cost and how much of the 5-hour allowance is used. One click
opens a window with the quotas, the burn rate and the whole history.

The program burnwick-report prints the same figures in a terminal, for bars
and for scripts.")
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)

set(CPACK_GENERATOR DEB)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
# simdjson and QCoro change their names with each release of Debian, so that each has a package of its own; the
# newer release's has the higher version, and an upgrade of the system takes it.
cmake_host_system_information(RESULT distribution QUERY DISTRIB_INFO)
# Testing and unstable have no number.
if(distribution_ID STREQUAL "debian" AND distribution_VERSION_ID)
    set(CPACK_DEBIAN_PACKAGE_VERSION ${PROJECT_VERSION}+deb${distribution_VERSION_ID})
endif()
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Loaded as plugins or read as data, which no tool sees in a program.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland, fonts-inter")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS gnome-shell-extension-appindicator)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/CompressDocuments.cmake)
include(CPack)
