# The inner loops of drawing and resampling: the scalar reference and, on x86-64, SSE2 (baseline)
# and AVX2 (built for it alone, used where the processor has it).
list(APPEND render_sources
  kernels/PixelKernels.cpp
  kernels/PixelKernelsScalar.cpp
  kernels/arch/${render_arch}/PixelKernelSets.cpp
)
if(render_arch STREQUAL "x86_64")
  list(APPEND render_sources kernels/arch/x86_64/PixelKernelsSse2.cpp kernels/arch/x86_64/PixelKernelsAvx2.cpp)
  set_source_files_properties(kernels/arch/x86_64/PixelKernelsAvx2.cpp PROPERTIES COMPILE_OPTIONS "-mavx2")
endif()
