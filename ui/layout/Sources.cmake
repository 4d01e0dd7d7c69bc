# Components that host other trees: AdapterComponent (an inner tree shown scaled).
list(APPEND ui_sources
  layout/AdapterComponent.cpp
)
