set(SOURCES
  texts.cpp
  texts.h
  undo.cpp
  undo.h)
