# Installed like any desktop program: `make install` (PREFIX, DESTDIR) and `make deb`, the
# program and its designs besides what is installed here.
set(VELMORA_APP_ID il.co.velmora.Velmora)
set(VELMORA_DOC_DIR ${CMAKE_INSTALL_DATADIR}/doc/velmora)

target_compile_definitions(velmora_ui PRIVATE VELMORA_APP_ID="${VELMORA_APP_ID}")
# The window's icon where no icon theme holds it (a program run from its build folder).
qt_add_resources(velmora_ui "icon" PREFIX "/icons" BASE package/icons FILES package/icons/velmora-64.png)

install(FILES package/${VELMORA_APP_ID}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES package/${VELMORA_APP_ID}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
foreach(size 16 24 32 48 64 128 256)
  install(FILES package/icons/velmora-${size}.png RENAME velmora.png
          DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps)
endforeach()
install(FILES package/icons/velmora.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES desktop/help/velmora.html DESTINATION ${VELMORA_DOC_DIR})

# Debian wants the changelog and the manual page compressed, without a time stamp.
foreach(page changelog velmora.1)
  add_custom_command(OUTPUT ${page}.gz
    COMMAND gzip -9nc ${CMAKE_CURRENT_SOURCE_DIR}/package/${page} > ${page}.gz
    DEPENDS package/${page} VERBATIM)
endforeach()
add_custom_target(velmora_compressed ALL DEPENDS changelog.gz velmora.1.gz)
install(FILES ${CMAKE_BINARY_DIR}/velmora.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES package/copyright ${CMAKE_BINARY_DIR}/changelog.gz DESTINATION ${VELMORA_DOC_DIR})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME velmora)
set(CPACK_PACKAGE_VENDOR Velmora)
set(CPACK_PACKAGE_CONTACT "Velmora <support@velmora.co.il>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "wedding planner in Hebrew: guests, seating and budget")
set(CPACK_PACKAGE_DESCRIPTION "Velmora is a program in Hebrew, laid out right to left, with which a couple
prepares their wedding: the guest list with answers, groups and gifts, the
seating at tables on a map of the garden, a budget of thirty branches, and
the printouts of the list, envelope labels, seating notes, map and budget.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE https://www.velmora.co.il)
# Libraries by dpkg-shlibdeps; besides them the window system's plugin, the Hebrew of
# Qt's standard buttons and the fonts the windows were measured with.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-qpa-plugins, qt6-translations-l10n, fonts-liberation2")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "adwaita-icon-theme")
include(CPack)
