# Resampling (ImageResampler, which keeps its working memory) and the image operations built on
# it (resampleImage, resized, getScaled, getSubImage). The image blits are operations of SoftwareGraphics, in graphics/.
list(APPEND render_sources
  image/ImageResampler.cpp
  image/ImageScaling.cpp
  image/ResamplingFilter.cpp
)
