# Software drawing: SoftwareGraphics and Alignment. The text operations of SoftwareGraphics
# (graphics/SoftwareGraphicsText.cpp) are listed by the font family, which they belong to.
list(APPEND render_sources
  graphics/Alignment.cpp
  graphics/SoftwareGraphics.cpp
  graphics/SoftwareGraphicsCircles.cpp
  graphics/SoftwareGraphicsImages.cpp
  graphics/SoftwareGraphicsLines.cpp
)
