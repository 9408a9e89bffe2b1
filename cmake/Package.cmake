# SPDX-License-Identifier: GPL-3.0-or-later
# The Debian package, made by ./package.sh: the installation as run.sh makes it, in the folder /usr/lib/qwd200/ that
# belongs to root, and around it what a desktop looks for. The install root holds links to it and the shared folders.

set(APP_ID cn.zarn.qwd200)
set(PRIVATE_FOLDER /usr/lib/qwd200)
set(PACKAGING ${PROJECT_SOURCE_DIR}/packaging)
set(MADE ${PROJECT_BINARY_DIR}/package-files)
file(MAKE_DIRECTORY ${MADE}/root ${MADE}/bin)

# gzipped(SOURCE NAME FOLDER): without time stamps, so that two builds give the same bytes.
function(gzipped source name folder)
  add_custom_command(OUTPUT ${MADE}/${name}.gz COMMAND sh -c "gzip -9nc \"$1\" > \"$2\"" gzipped ${source} ${MADE}/${name}.gz
                     DEPENDS ${source} VERBATIM)
  add_custom_target(gzipped-${name} ALL DEPENDS ${MADE}/${name}.gz)
  install(FILES ${MADE}/${name}.gz DESTINATION ${folder})
endfunction()

foreach(command qwd200 imageconvert ocrdoc)
  file(CREATE_LINK ../lib/qwd200/bin/${command} ${MADE}/bin/${command} SYMBOLIC)
endforeach()
foreach(command zip-ofd pdfReader)
  file(CREATE_LINK ../lib/qwd200/${command} ${MADE}/bin/${command} SYMBOLIC)
endforeach()
install(DIRECTORY ${MADE}/bin/ DESTINATION /usr/bin)
foreach(linked ${ROOT_FILES})
  file(CREATE_LINK ${PRIVATE_FOLDER}/${linked} ${MADE}/root/${linked} SYMBOLIC)
  install(FILES ${MADE}/root/${linked} DESTINATION /opt/zarn/Scanner/QWD200)
endforeach()

foreach(manual ${MANUAL_PAGES})
  gzipped(${PROJECT_SOURCE_DIR}/docs/man/${manual} ${manual} /usr/share/man/man1)
endforeach()
gzipped(${PACKAGING}/deb/changelog changelog /usr/share/doc/qwd200)
install(FILES ${PACKAGING}/deb/copyright DESTINATION /usr/share/doc/qwd200)
install(FILES ${PACKAGING}/deb/lintian-overrides DESTINATION /usr/share/lintian/overrides RENAME qwd200)
install(FILES ${PACKAGING}/${APP_ID}.desktop DESTINATION /usr/share/applications)
install(FILES ${PACKAGING}/${APP_ID}.metainfo.xml DESTINATION /usr/share/metainfo)
install(FILES ${PACKAGING}/icons/${APP_ID}.svg DESTINATION /usr/share/icons/hicolor/scalable/apps)
install(FILES ${PACKAGING}/icons/${APP_ID}-symbolic.svg DESTINATION /usr/share/icons/hicolor/symbolic/apps)
install(FILES src/app/images/qwd200.png DESTINATION /usr/share/icons/hicolor/128x128/apps RENAME ${APP_ID}.png)
install(DIRECTORY ${PACKAGING}/completion/ DESTINATION /usr/share/bash-completion/completions)
install(FILES ${PACKAGING}/60-qwd200.rules DESTINATION /lib/udev/rules.d)

set(CPACK_GENERATOR DEB)
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX ${PRIVATE_FOLDER})
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PACKAGE_CONTACT "The QWD200 developers <qwd200@zarn.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "document scanning with the QWD200 scanner")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "Scans stacks of paper to straight, upright, clean and well-named files: images,
PDF and OFD documents with or without searchable text, text files and Word
documents recognised from Simplified Chinese. The scanner's key starts it.
Command-line companions work on page images without a scanner.")
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "adduser, tesseract-ocr-chi-sim, fonts-noto-cjk")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "libqt5svg5, qt5-image-formats-plugins, qtwayland5, xdg-utils")
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${PACKAGING}/deb/postinst ${PACKAGING}/deb/postrm)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
