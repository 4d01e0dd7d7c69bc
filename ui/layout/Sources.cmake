# Components that host other trees: AdapterComponent (an inner tree shown scaled), and Viewport
# with its HolderComponent (a larger component scrolled).
list(APPEND ui_sources
  layout/AdapterComponent.cpp
  layout/HolderComponent.cpp
  layout/Viewport.cpp
)
