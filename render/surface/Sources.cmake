# Surfaces: the Surface interface and MemorySurface. The window-system surfaces and textures
# come with the OpenGL presenter.
list(APPEND render_sources
  surface/MemorySurface.cpp
)
