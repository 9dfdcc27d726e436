#version 120
// Grid mesh: one colour per vertex, interpolated across the triangles.
attribute vec3 vertexPosition;
attribute vec3 vertexColor;
varying vec3 color;
uniform mat4 modelViewMatrix;

void main()
{
    color = vertexColor;
    gl_Position = modelViewMatrix * vec4(vertexPosition, 1.0);
}
