set(SOURCES
  overview_layers.cpp
  overview_layers.h
  overview_painter.cpp
  overview_painter.h
  overview_scene.cpp
  overview_scene.h)
