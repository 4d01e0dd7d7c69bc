# Fonts: FreeType faces, the fallback system font, the glyph cache, and the text operations of
# SoftwareGraphics, which draw with them.
list(APPEND render_sources
  font/FallbackFont.cpp
  font/Font.cpp
  font/FontEngine.cpp
  font/FontFace.cpp
  font/FontServices.cpp
  font/GlyphsCache.cpp
  graphics/SoftwareGraphicsText.cpp
)

# The fallback font's system paths, per platform.
if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
  list(APPEND render_sources font/linux/SystemFontPaths.cpp)
else()
  message(FATAL_ERROR "render/font: no system font paths for ${CMAKE_SYSTEM_NAME}")
endif()

find_package(Freetype REQUIRED)
list(APPEND render_private_dependencies Freetype::Freetype)
