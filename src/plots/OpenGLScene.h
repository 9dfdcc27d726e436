#pragma once
// Off-screen renderer of a grid of values: draws a MatrixDataArray as a coloured image of the
// same grid, one vertex (or one texel) per grid point, in the stepped blue-to-red colour map.
// The chart keeps one scene that is never shown and draws its image with QPainter.
//
// How it behaves where callers could otherwise guess:
// - Rendering goes into a frame buffer object of bufferSize(); the widget's own window is never
//   needed. The window-system size of a hidden scene means nothing: only resize() sets the
//   target, and resizeGL() follows the widget only while it is visible.
// - renderToImage() returns an ARGB32 image of bufferSize() whose rows are in OpenGL order,
//   the grid's first column (j = 0) at row 0; red and blue are already in QImage order. A null
//   image when there is no OpenGL context (a host without OpenGL), when bufferSize() is empty,
//   or when the frame buffer cannot be bound. Sizes beyond the implementation's largest texture
//   are clamped to it.
// - setMeshData(grid, min, max, rect): the grid's rows are x, its columns y. The mesh takes every
//   grid point. In texture mode the rectangle decides how many columns are used, as the chart's
//   square cells do: int(height / d + 1) with d = width / (rows - 1); an empty rectangle uses
//   every column. Triangles touching a NaN or
//   infinite value are left out, so they show the clear colour. Returns false, and clears the
//   mesh so that the next image is the cleared buffer, for no grid, fewer than two rows or
//   columns, a non-finite min or max, a zero colour step, or no OpenGL context.
// - Shader and frame-buffer faults go to the critical log; rendering goes on and the image
//   then shows only the cleared buffer (or is null when the frame buffer cannot be bound).

#include <QColor>
#include <QGLBuffer>
#include <QGLWidget>
#include <QImage>
#include <QMatrix4x4>
#include <QRectF>
#include <QSize>
#include <QVector>

class QGLFramebufferObject;
class QGLShaderProgram;

namespace rkBase {
class MatrixDataArray;
}

class OpenGLScene : public QGLWidget
{
    Q_OBJECT
public:
    explicit OpenGLScene(QGLFormat format, QWidget* parent = nullptr);
    ~OpenGLScene() override;

    virtual bool setMeshData(rkBase::MatrixDataArray* grid, double min, double max, const QRectF& rect);
    // Sets the target size of the frame buffer; it is rebuilt on the next paint.
    virtual void resize(const QSize& size);
    virtual QImage renderToImage();
    virtual void prepareShaderProgram();
    virtual void setupVertexArrayObject();
    // Loads a fixed test mesh: one quad over the whole target, red at the bottom left, green at
    // the bottom right, blue at the top right and white at the top left.
    virtual void prepareVertexBuffersTest();
    virtual void prepareVertexBuffers(const QVector<float>& vertices, const QVector<float>& colors,
                                      const QVector<unsigned int>& indices);
    virtual void prepareTexture();
    virtual void render();

    // Creates the shader program on this widget's context once.
    void initialise();
    // Frees every GL object of the scene; safe to call more than once.
    void cleanup();
    void createVAO();
    void deleteVAO();
    // The window of the texture shown in texture mode.
    void setUV(float u0, float v0, float u1, float v1);
    QSize bufferSize() const { return m_bufferSize; }

    // Texture mode draws the grid as an image on one quad, filtered linearly, in place of a
    // mesh of coloured vertices. Changing it rebuilds the shader program.
    void setTextureMode(bool on);
    bool textureMode() const { return m_textureMode; }
    QColor clearColor() const { return m_clearColor; }
    void setClearColor(const QColor& color) { m_clearColor = color; }
    // True from resize() until the next paint has rebuilt the frame buffer.
    bool resizePending() const { return m_resizeNeeded; }
    // Size of the frame buffer built by the last paint; empty before the first.
    QSize frameBufferSize() const;

protected:
    void initializeGL() override;
    void paintGL() override;
    void resizeGL(int width, int height) override;

    bool setMeshDataAsGrid(rkBase::MatrixDataArray* grid, double min, double max, const QRectF& rect);
    bool setMeshDataAsTexture(rkBase::MatrixDataArray* grid, double min, double max, const QRectF& rect);
    // Forgets the mesh: the next render draws nothing.
    void clearMesh();
    // Makes the context current and uploads the stored mesh; false without a context.
    bool uploadMesh();

    QColor m_clearColor = Qt::white;
    QGLShaderProgram* m_program = nullptr;
    QGLFramebufferObject* m_frameBuffer = nullptr;
    QSize m_bufferSize = QSize(500, 300);
    bool m_resizeNeeded = true;
    unsigned int m_vertexArrayId = 0;
    unsigned int m_textureId = 0;
    QImage m_image;
    bool m_textureMode = false;
    QMatrix4x4 m_modelViewMatrix;
    int m_gridRowSize = -1;
    int m_gridColumnSize = -1;
    QVector<float> m_vertices;
    QVector<float> m_colors;
    QVector<unsigned int> m_indices;
    QGLBuffer m_vertexBuffer = QGLBuffer(QGLBuffer::VertexBuffer);
    QGLBuffer m_colorBuffer = QGLBuffer(QGLBuffer::VertexBuffer);
    QGLBuffer m_indexBuffer = QGLBuffer(QGLBuffer::IndexBuffer);
    QGLBuffer m_textureCoordinateBuffer = QGLBuffer(QGLBuffer::VertexBuffer);
    float m_u0 = 0.0f;
    float m_v0 = 0.0f;
    float m_u1 = 1.0f;
    float m_v1 = 1.0f;
};
