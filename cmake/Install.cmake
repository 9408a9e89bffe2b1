# SPDX-License-Identifier: GPL-3.0-or-later
# What belongs below the install root: the program, its image library, the OFD packer, the PDF viewer, Qt's own texts in Chinese,
# the logo, and the folders that the program writes into. No settings: the program writes them at its first start.

get_target_property(qmake Qt5::qmake IMPORTED_LOCATION)
execute_process(COMMAND ${qmake} -query QT_INSTALL_TRANSLATIONS OUTPUT_VARIABLE translations
                OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)

install(TARGETS qwd200 imageconvert_command RUNTIME DESTINATION bin)
install(TARGETS imageconvert LIBRARY DESTINATION lib NAMELINK_SKIP)
install(TARGETS zip-ofd pdfReader RUNTIME DESTINATION .)
install(FILES ${translations}/qtbase_zh_CN.qm DESTINATION . RENAME qt_zh_CN.qm)
install(FILES packaging/icons/zarn.png DESTINATION .)

# The files that the program looks for in the install root itself.
set(ROOT_FILES zip-ofd pdfReader help_qwd200.pdf qt_zh_CN.qm zarn.png)
set(MANUAL_PAGES qwd200.1 imageconvert.1 ocrdoc.1 zip-ofd.1 pdfReader.1)

if(QWD200_PACKAGE)
  include(cmake/Package.cmake)
else()
  list(TRANSFORM MANUAL_PAGES PREPEND docs/man/ OUTPUT_VARIABLE pages)
  install(FILES ${pages} DESTINATION share/man/man1)
  install(DIRECTORY DESTINATION scanModeFile)
  install(DIRECTORY DESTINATION tempfiles)
  install(DIRECTORY DESTINATION tempTxtFiles)
endif()
