# The sources that draw. They need neither threads nor files of pictures, and so serve other programs, too.
set(RAYTRACER_DRAWING
  Bvh.cpp
  Camera.cpp
  Mesh.cpp
  Message.cpp
  ObjText.cpp
  PacketScalar.cpp
  Picture.cpp
  Scene.cpp
  Shader.cpp
  Sky.cpp
  Textures.cpp
  TileDrawing.cpp
  Tiles.cpp
  Tracer.cpp)
list(TRANSFORM RAYTRACER_DRAWING PREPEND ${CMAKE_CURRENT_LIST_DIR}/)
