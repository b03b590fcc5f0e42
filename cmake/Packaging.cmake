# The Debian package (`make package`, CPack's DEB generator): the two programs in /usr/bin, the
# staged installed folder in /usr/share/lumora, and what a desktop needs to offer the program:
# menu entry, icons, AppStream metainfo, manual pages. The program finds its folder there by
# itself (../share/lumora beside /usr/bin), so the files go in unchanged from the stage.

set(LUMORA_APP_ID org.lumora.Lumora)
set(LUMORA_PACKAGING ${CMAKE_SOURCE_DIR}/packaging)
set(LUMORA_PACKAGE_FILES ${CMAKE_BINARY_DIR}/packaging)
set(LUMORA_ICON ${CMAKE_SOURCE_DIR}/src/forms/pictures/lumora.svg)

include(GNUInstallDirs)

# --- files made at build time: icon sizes, compressed manual pages and changelog ------------
find_program(RSVG_CONVERT rsvg-convert REQUIRED)
find_program(GZIP gzip REQUIRED)
set(LUMORA_ICON_SIZES 16 22 24 32 48 64 128 256 512)
set(made)
foreach(size ${LUMORA_ICON_SIZES})
  set(png ${LUMORA_PACKAGE_FILES}/icons/${size}/${LUMORA_APP_ID}.png)
  add_custom_command(OUTPUT ${png}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${LUMORA_PACKAGE_FILES}/icons/${size}
    COMMAND ${RSVG_CONVERT} --width ${size} --height ${size} --output ${png} ${LUMORA_ICON}
    DEPENDS ${LUMORA_ICON} VERBATIM)
  list(APPEND made ${png})
  install(FILES ${png} DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps)
endforeach()

# Debian wants manual pages and changelogs compressed, without a timestamp (-n) so that the
# same sources make the same package.
foreach(pair lumora.1:man lumora-cli.1:man changelog:doc)
  string(REPLACE ":" ";" pair ${pair})
  list(GET pair 0 file)
  set(gz ${LUMORA_PACKAGE_FILES}/${file}.gz)
  add_custom_command(OUTPUT ${gz}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${LUMORA_PACKAGE_FILES}
    COMMAND sh -c "${GZIP} -9nc \"$1\" > \"$2\"" gzip ${LUMORA_PACKAGING}/${file} ${gz}
    DEPENDS ${LUMORA_PACKAGING}/${file} VERBATIM)
  list(APPEND made ${gz})
endforeach()
add_custom_target(package_files ALL DEPENDS ${made})

# The spelling dictionaries stay Debian's: relative links from app/spelling to
# /usr/share/hunspell (the package recommends hunspell-en-us and hunspell-en-med). Start-up
# offers only the dictionaries present, so a system without them spells with fewer lists.
set(LUMORA_SPELLING_LINKS en_US.dic en_US.aff en_med_glut.dic)
file(MAKE_DIRECTORY ${LUMORA_PACKAGE_FILES}/spelling)
foreach(dict ${LUMORA_SPELLING_LINKS})
  file(CREATE_LINK ../../../hunspell/${dict} ${LUMORA_PACKAGE_FILES}/spelling/${dict} SYMBOLIC)
  install(FILES ${LUMORA_PACKAGE_FILES}/spelling/${dict}
    DESTINATION ${CMAKE_INSTALL_DATADIR}/lumora/app/spelling)
endforeach()

# --- what is installed ------------------------------------------------------------------------
# Relocations resolved at start and then made read-only, as Debian builds its programs.
target_link_options(lumora PRIVATE -Wl,-z,relro,-z,now)
target_link_options(lumora-cli PRIVATE -Wl,-z,relro,-z,now)
install(TARGETS lumora lumora-cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
# The stage as it is, but for the copied dictionaries (linked above), a lock or unfinished
# file that a run from the stage left behind, and the marker that start-up writes in app/.
install(DIRECTORY ${LUMORA_DIST}/Templates ${LUMORA_DIST}/app ${LUMORA_DIST}/Help
  DESTINATION ${CMAKE_INSTALL_DATADIR}/lumora
  PATTERN ".lumora-lock" EXCLUDE
  PATTERN "*.tmp-lumora" EXCLUDE
  REGEX "/app/version$" EXCLUDE
  REGEX "/app/spelling/(en_US\\.dic|en_US\\.aff|en_med_glut\\.dic)$" EXCLUDE)
install(FILES ${LUMORA_PACKAGING}/${LUMORA_APP_ID}.desktop
  DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${LUMORA_PACKAGING}/${LUMORA_APP_ID}.metainfo.xml
  DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${LUMORA_ICON} RENAME ${LUMORA_APP_ID}.svg
  DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES ${LUMORA_PACKAGE_FILES}/lumora.1.gz ${LUMORA_PACKAGE_FILES}/lumora-cli.1.gz
  DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${LUMORA_PACKAGING}/copyright ${LUMORA_PACKAGE_FILES}/changelog.gz
  DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/lumora)
install(FILES ${LUMORA_PACKAGING}/lintian-overrides RENAME lumora
  DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides)

# --- the package ------------------------------------------------------------------------------
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME lumora)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "The Lumora developers <developers@lumora.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "authoring tool for web training modules that report to an LMS")
set(CPACK_PACKAGE_DESCRIPTION
  "With Lumora, instructors who write no HTML build self-contained web training\n"
  "modules: a Lesson of pages with a glossary and question-and-answer activities,\n"
  "an Evaluation drawn from a pool of graded questions, or a Survey of rating\n"
  "questions. Every module runs in any browser and reports to a learning\n"
  "management system over SCORM 1.2 or AICC.\n"
  ".\n"
  "This package holds the desktop program and lumora-cli, which creates, checks,\n"
  "saves and packages modules without a window.")
string(JOIN "" CPACK_PACKAGE_DESCRIPTION ${CPACK_PACKAGE_DESCRIPTION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION education)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
# The libraries the two programs link decide the dependencies, through dpkg-shlibdeps.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "hunspell-en-us, hunspell-en-med")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
include(CPack)
