# Surfaces: the Surface interface with its factory, MemorySurface, the ImageSurface that shows
# its pixels through the window system's image put (ImagePresenter), and TextureSurface, which
# shows them through a texture of a rendering context.
list(APPEND render_sources
  surface/ImageSurface.cpp
  surface/MemorySurface.cpp
  surface/Surface.cpp
  surface/TextureSurface.cpp
)
