# What is installed and packed. The program folder holds everything that belongs
# to the program, and the program keeps its files there; it works wherever it is
# put. What the desktop needs to know of it is a component of its own.
if(CMAKE_BUILD_TYPE STREQUAL Release)
  install(CODE "set(CMAKE_INSTALL_DO_STRIP TRUE)" COMPONENT program)
endif()
install(TARGETS tessera tessera_shell RUNTIME DESTINATION . COMPONENT program)
install(FILES resources/Lizenz.txt DESTINATION . COMPONENT program)
install(FILES resources/icons/glyphs/LICENSE RENAME Lizenz-Symbole.txt
  DESTINATION . COMPONENT program)
# For where Qt has none: the program prefers those in Qt's own folder.
install(FILES
  ${QT6_INSTALL_PREFIX}/${QT6_INSTALL_TRANSLATIONS}/qtbase_de.qm
  ${QT6_INSTALL_PREFIX}/${QT6_INSTALL_TRANSLATIONS}/qtwebengine_de.qm
  DESTINATION translations COMPONENT program OPTIONAL)

install(FILES resources/tessera.desktop
  DESTINATION share/applications COMPONENT desktop EXCLUDE_FROM_ALL)
install(FILES resources/example.loomwork.tessera.metainfo.xml
  DESTINATION share/metainfo COMPONENT desktop EXCLUDE_FROM_ALL)
install(FILES resources/icons/frame.svg RENAME tessera.svg
  DESTINATION share/icons/hicolor/scalable/apps COMPONENT desktop EXCLUDE_FROM_ALL)
add_dependencies(tessera tessera_pictures)
install(DIRECTORY ${CMAKE_BINARY_DIR}/pictures/
  DESTINATION share/icons/hicolor COMPONENT desktop EXCLUDE_FROM_ALL)

set(CPACK_GENERATOR TGZ)
set(CPACK_PACKAGE_VENDOR Loomwork)
set(CPACK_PACKAGE_FILE_NAME
  ${PROJECT_NAME}-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_INSTALL_CMAKE_PROJECTS
  "${CMAKE_BINARY_DIR};${PROJECT_NAME};program;/"
  "${CMAKE_BINARY_DIR};${PROJECT_NAME};desktop;/")
set(CPACK_SOURCE_GENERATOR "")
include(CPack)
