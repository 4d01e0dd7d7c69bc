# Image effects: the float picture they compute in, the disc and power kernels, the convolution
# and the box blur, and the effect operations of SoftwareGraphics built from them
# (graphics/SoftwareGraphicsEffects.cpp), which this family lists.
list(APPEND render_sources
  effects/BoxBlur.cpp
  effects/Convolution.cpp
  effects/EffectKernels.cpp
  effects/FloatImage.cpp
  graphics/SoftwareGraphicsEffects.cpp
)
