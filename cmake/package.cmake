# bromvale-offline as a package: what is installed, and the .deb that CPack makes of it.
include(GNUInstallDirs)
bromvale_shipped(bromvale-offline offline ${CMAKE_INSTALL_BINDIR})

# The documents of a Debian package are made when something is installed, so that a build needs no Python.
set(documents ${CMAKE_BINARY_DIR}/generated/debian)
install(CODE "execute_process(COMMAND_ERROR_IS_FATAL ANY
  COMMAND \"${CMAKE_SOURCE_DIR}/packaging/debian/make-documents\" \"${PROJECT_VERSION}\" \"${documents}\")" COMPONENT offline)
install(FILES ${documents}/bromvale-offline.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT offline)
install(FILES ${documents}/copyright ${documents}/changelog.gz
  DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/bromvale-offline COMPONENT offline)
install(FILES packaging/debian/bash-completion RENAME bromvale-offline
  DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT offline)

set(CPACK_GENERATOR DEB)
set(CPACK_COMPONENTS_ALL offline)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_SOURCE_DIR}/packaging/debian/normalise.cmake)
set(CPACK_THREADS 1)
set(CPACK_PACKAGE_CONTACT "Bromvale developers <bromvale@bromvale.example>")
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://${BROMVALE_WEB_HOST}/")
set(CPACK_DEBIAN_OFFLINE_PACKAGE_NAME bromvale-offline)
set(CPACK_DEBIAN_OFFLINE_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_OFFLINE_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_COMPONENT_OFFLINE_DESCRIPTION "looks for dead entries in Windows registries
Reads what the registry editor of Windows exports, finds COM classes,
interfaces, type libraries, application paths and uninstall entries that point
to nothing, and prints a report; the files that it reads never change.
.
It also reads the raw hives of a Windows that does not start any more, with
what is still in their logs, and takes what it has found out of them, with
copies beside that put everything back.
.
It is the program Bromvale on a simulated machine: folders stand for drives,
scripts drive its window, and the registry after a removal can be saved.")
include(CPack)
