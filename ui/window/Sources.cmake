# ComponentsWindow: a native Window that shows a tree of components.
list(APPEND ui_sources
  window/ComponentsWindow.cpp
)
