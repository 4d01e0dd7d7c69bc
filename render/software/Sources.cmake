# The rendering context in software: the same primitives and textured quads as the OpenGL
# context, drawn into the pixels that a window without GL shows.
list(APPEND render_sources
  software/SoftwareContext.cpp
  software/SoftwareTexture.cpp
)
