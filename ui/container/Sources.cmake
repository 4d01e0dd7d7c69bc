# ComponentsContainer: regions, painting into a buffer, scrolling, focus, keys and pointer routing.
list(APPEND ui_sources
  container/ComponentsContainer.cpp
  container/ComponentsContainerInput.cpp
  container/ComponentsContainerWindow.cpp
)
