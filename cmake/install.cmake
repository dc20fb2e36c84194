# What is installed and packed, in components:
#   program  the program folder: everything that belongs to the program, which works
#            wherever it is put
#   texts    the same folder: German texts of Qt
#   desktop  below share/: what the desktop and "man" want to know
#   debian   what only a package of Debian's has
if(CMAKE_BUILD_TYPE STREQUAL Release)
  install(CODE "set(CMAKE_INSTALL_DO_STRIP TRUE)" COMPONENT program)
endif()
# One folder further down than where packing takes a library for one of the system's.
install(TARGETS tessera tessera_shell
  RUNTIME DESTINATION . COMPONENT program
  LIBRARY DESTINATION lib COMPONENT program)
install(FILES resources/Lizenz.txt DESTINATION . COMPONENT program)
install(FILES resources/icons/glyphs/LICENSE RENAME Lizenz-Symbole.txt
  DESTINATION . COMPONENT program)
# For where Qt has none: the program prefers those in Qt's own folder.
install(FILES
  ${QT6_INSTALL_PREFIX}/${QT6_INSTALL_TRANSLATIONS}/qtbase_de.qm
  ${QT6_INSTALL_PREFIX}/${QT6_INSTALL_TRANSLATIONS}/qtwebengine_de.qm
  DESTINATION translations COMPONENT texts OPTIONAL)

install(FILES resources/tessera.desktop
  DESTINATION share/applications COMPONENT desktop EXCLUDE_FROM_ALL)
install(FILES resources/example.loomwork.tessera.metainfo.xml
  DESTINATION share/metainfo COMPONENT desktop EXCLUDE_FROM_ALL)
install(FILES resources/icons/frame.svg RENAME tessera.svg
  DESTINATION share/icons/hicolor/scalable/apps COMPONENT desktop EXCLUDE_FROM_ALL)
add_dependencies(tessera tessera_pictures)
install(DIRECTORY ${CMAKE_BINARY_DIR}/pictures/
  DESTINATION share/icons/hicolor COMPONENT desktop EXCLUDE_FROM_ALL)

# packed(made from): a file compressed without a date, so that it is the same every time.
set(packed_files)
function(packed made from)
  add_custom_command(OUTPUT ${made} COMMAND gzip -9nc ${PROJECT_SOURCE_DIR}/${from} > ${made}
    DEPENDS ${PROJECT_SOURCE_DIR}/${from} VERBATIM)
  set(packed_files ${packed_files} ${made} PARENT_SCOPE)
endfunction()
set(packed_folder ${CMAKE_BINARY_DIR}/packed)
file(MAKE_DIRECTORY ${packed_folder})
packed(${packed_folder}/tessera.1.gz packaging/man/tessera.1)
packed(${packed_folder}/tessera.de.1.gz packaging/man/tessera.de.1)
packed(${packed_folder}/changelog.gz packaging/debian/changelog)
add_custom_target(tessera_packed DEPENDS ${packed_files})
add_dependencies(tessera tessera_packed)
install(FILES ${packed_folder}/tessera.1.gz
  DESTINATION share/man/man1 COMPONENT desktop EXCLUDE_FROM_ALL)
install(FILES ${packed_folder}/tessera.de.1.gz RENAME tessera.1.gz
  DESTINATION share/man/de/man1 COMPONENT desktop EXCLUDE_FROM_ALL)

file(CREATE_LINK ../lib/tessera/tessera ${packed_folder}/tessera SYMBOLIC)
install(FILES ${packed_folder}/tessera DESTINATION bin COMPONENT debian EXCLUDE_FROM_ALL)
install(FILES packaging/debian/copyright ${packed_folder}/changelog.gz
  DESTINATION share/doc/tessera COMPONENT debian EXCLUDE_FROM_ALL)

set(CPACK_GENERATOR TGZ)
set(CPACK_PACKAGE_VENDOR Loomwork)
set(CPACK_PACKAGE_CONTACT "Loomwork <info@loomwork.example>")
set(CPACK_PACKAGE_HOMEPAGE_URL https://www.loomwork.example/)
set(CPACK_PACKAGE_FILE_NAME
  ${PROJECT_NAME}-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_SOURCE_DIR}/cmake/generators.cmake)
set(CPACK_BUILD_DIR_OF_TESSERA ${CMAKE_BINARY_DIR})
set(CPACK_SOURCE_GENERATOR "")
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE
  GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT) # tessera_5.3.5_amd64.deb
set(CPACK_DEBIAN_PACKAGE_SECTION web)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The libraries say all but the texts of Qt's dialogs in German: the engine's names the package
# of its process, too.
set(CPACK_DEBIAN_PACKAGE_DEPENDS qt6-translations-l10n)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
  "qt6-wayland, fonts-dejavu-core, fonts-liberation, xdg-utils")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "web browser with many windows inside one frame")
set(CPACK_PACKAGE_DESCRIPTION
"Tessera shows any number of web pages in windows that stand side by side,
one under the other or in a cascade inside one frame. It keeps a history for
the run and an archive of bookmarks, which can be exported, and one running
copy takes up every address opened from outside. It speaks German.
.
Pages are drawn by Qt WebEngine, to which Debian gives no security support:
it is meant for pages that one trusts.")
include(CPack)
