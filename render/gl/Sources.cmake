# The OpenGL presenter: OpenGLContext over a window's GLDrawable, its circle shader, textures
# with pixel buffers, and OpenGLSurface. Only GL itself is linked here (libOpenGL); the window
# system's half (GLX) lives in the native layer.
set(OpenGL_GL_PREFERENCE GLVND)
find_package(OpenGL REQUIRED COMPONENTS OpenGL)
list(APPEND render_sources
  gl/OpenGLContext.cpp
  gl/OpenGLFunctions.cpp
  gl/OpenGLShader.cpp
  gl/OpenGLSurface.cpp
  gl/OpenGLTexture.cpp
)
list(APPEND render_dependencies OpenGL::OpenGL)
