# Copies share/ into the staged installation folder and the system's Hunspell dictionaries
# into its spelling folder. Run at every build; copying is cheap and keeps the stage current.
file(MAKE_DIRECTORY ${DST}/app/spelling)
foreach(part Templates app Help)
  if(EXISTS ${SRC}/${part})
    file(COPY ${SRC}/${part} DESTINATION ${DST})
  endif()
endforeach()
foreach(dict en_US.dic en_US.aff en_med_glut.dic)
  if(EXISTS /usr/share/hunspell/${dict} AND NOT EXISTS ${DST}/app/spelling/${dict})
    file(COPY /usr/share/hunspell/${dict} DESTINATION ${DST}/app/spelling)
  endif()
endforeach()
