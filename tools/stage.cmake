# Builds the staged installation folder from share/: the templates and the help, each completed
# with the learner player's files (kept once, in share/player), the tool's own pictures and the
# spelling dictionaries. Run at every build; copying is cheap and keeps the stage current.
file(MAKE_DIRECTORY ${DST}/app/spelling)
foreach(part Templates app Help)
  if(EXISTS ${SRC}/${part})
    # The user dictionary holds the words the author added: it is staged empty once and never
    # overwritten, or every build would forget them.
    file(COPY ${SRC}/${part} DESTINATION ${DST} PATTERN userdic.dic EXCLUDE)
  endif()
endforeach()
if(EXISTS ${SRC}/app/spelling/userdic.dic AND NOT EXISTS ${DST}/app/spelling/userdic.dic)
  file(COPY ${SRC}/app/spelling/userdic.dic DESTINATION ${DST}/app/spelling)
endif()

# Which player parts each module folder carries: every module the common part (scripts, styles,
# pictures), a Lesson (and the help, itself a Lesson) the page player, the others the quiz player.
set(LESSON_PARTS common lesson)
set(QUIZ_PARTS common quiz)
foreach(target Templates/Lesson:LESSON Templates/Evaluation:QUIZ Templates/Survey:QUIZ Help:LESSON)
  string(REPLACE ":" ";" pair ${target})
  list(GET pair 0 folder)
  list(GET pair 1 kind)
  if(NOT EXISTS ${DST}/${folder})
    continue()
  endif()
  foreach(part ${${kind}_PARTS})
    file(GLOB entries ${SRC}/player/${part}/*)
    file(COPY ${entries} DESTINATION ${DST}/${folder})
  endforeach()
  # git keeps no empty folders; a module folder always has its media folder.
  file(MAKE_DIRECTORY ${DST}/${folder}/media)
endforeach()

# The help is itself a Lesson: its frameset is the Lesson template's, under the help's own name.
if(EXISTS ${DST}/Help AND EXISTS ${SRC}/Templates/Lesson/lessonframeset.html)
  file(COPY_FILE ${SRC}/Templates/Lesson/lessonframeset.html ${DST}/Help/lessonFrameset.html)
endif()

foreach(dict en_US.dic en_US.aff en_med_glut.dic)
  if(EXISTS /usr/share/hunspell/${dict} AND NOT EXISTS ${DST}/app/spelling/${dict})
    file(COPY /usr/share/hunspell/${dict} DESTINATION ${DST}/app/spelling)
  endif()
endforeach()
