# Component: the tree, geometry, hit testing, repaint requests and the paint walks.
list(APPEND ui_sources
  component/Component.cpp
  component/ComponentInput.cpp
  component/ComponentPainting.cpp
  component/ComponentTree.cpp
)
