# The rendering context interface, its textures, and the GL drawable that the window system
# offers a context to draw through.
list(APPEND render_sources
  context/RenderingContext.cpp
  context/Texture.cpp
)
