#version 330
// Textured quad: the grid as an image, positions already in clip space.
layout(location = 0) in vec4 vertexPosition;
layout(location = 1) in vec2 textureCoords;
out vec2 texCoord;

void main()
{
    texCoord = textureCoords;
    gl_Position = vertexPosition;
}
