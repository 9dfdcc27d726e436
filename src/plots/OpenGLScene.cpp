#include "OpenGLScene.h"

#include <MatrixDataArray.h>
#include <RKColormap.h>

#include <QGLFramebufferObject>
#include <QGLShaderProgram>
#include <QtDebug>

#include <algorithm>
#include <cmath>

#ifndef GL_CLAMP_TO_EDGE
#define GL_CLAMP_TO_EDGE 0x812F
#endif

namespace {
// The grid's own step when it has none.
constexpr double kNoStep = 99999.0;
// Colour components go to GL over 256, as the stress overlay has always been drawn.
constexpr float kColorScale = 0.00390625f;

bool makeColormap(const rkBase::MatrixDataArray* grid, double min, double max, RKColormap& map)
{
    if (!grid || !std::isfinite(min) || !std::isfinite(max))
        return false;
    double step = grid->colorMapStepSize();
    if (step == kNoStep || step == 0.0)
        step = (max - min) / 256.0;
    if (step == 0.0 || std::isnan(step))
        return false;
    map.set_interpolation(RKColormap::STEPPED);
    map.fill_spectrum_color_list(min, max, step, grid->flipColorMap());
    return true;
}

// Columns of the grid inside the rectangle when its cells are square, as the chart lays them
// out; an empty rectangle takes them all.
int usedColumns(const rkBase::MatrixDataArray* grid, const QRectF& rect)
{
    const int rows = grid->rowCount();
    int columns = grid->columnCount();
    const double width = rect.width();
    const double height = rect.height();
    if (rows >= 2 && std::isfinite(width) && std::isfinite(height) && width > 0.0 && height > 0.0) {
        const double fit = height / (width / (rows - 1)) + 1.0;
        if (fit < columns)
            columns = static_cast<int>(fit);
    }
    return columns;
}

QRgb pixelColor(const RKColormap& map, double value, const QColor& blank)
{
    return std::isfinite(value) ? map.value_to_color(value).rgb() : blank.rgb();
}

void fillBuffer(QGLBuffer& buffer, const void* data, int bytes)
{
    buffer.destroy();
    buffer.create();
    buffer.setUsagePattern(QGLBuffer::StaticDraw);
    buffer.bind();
    buffer.allocate(data, bytes);
}
} // namespace

OpenGLScene::OpenGLScene(QGLFormat format, QWidget* parent)
    : QGLWidget(format, parent)
{
    // The picture lives in the frame buffer; a swap of a window that is never shown only warns.
    setAutoBufferSwap(false);
}

OpenGLScene::~OpenGLScene()
{
    cleanup();
}

bool OpenGLScene::setMeshData(rkBase::MatrixDataArray* grid, double min, double max, const QRectF& rect)
{
    return m_textureMode ? setMeshDataAsTexture(grid, min, max, rect) : setMeshDataAsGrid(grid, min, max, rect);
}

bool OpenGLScene::setMeshDataAsGrid(rkBase::MatrixDataArray* grid, double min, double max, const QRectF& rect)
{
    clearMesh();
    RKColormap map;
    if (!makeColormap(grid, min, max, map))
        return false;
    // The mesh is the whole grid stretched over the target; only the texture is cut to square
    // cells.
    Q_UNUSED(rect);
    const int nx = grid->rowCount();
    const int ny = grid->columnCount();
    if (nx < 2 || ny < 2)
        return false;

    m_modelViewMatrix.setToIdentity();
    m_modelViewMatrix.translate(-1.0f, -1.0f, 0.0f);
    m_modelViewMatrix.scale(2.0f / (nx - 1), 2.0f / (ny - 1), 1.0f);

    const int count = nx * ny;
    m_vertices.reserve(3 * count);
    m_colors.reserve(3 * count);
    std::vector<bool> finite(static_cast<std::size_t>(count));
    for (int j = 0; j < ny; ++j) {
        for (int i = 0; i < nx; ++i) {
            const double value = grid->toDouble(i, j);
            finite[static_cast<std::size_t>(j * nx + i)] = std::isfinite(value);
            const QColor c = QColor::fromRgb(pixelColor(map, value, m_clearColor));
            m_vertices << float(i) << float(j) << 0.0f;
            m_colors << c.red() * kColorScale << c.green() * kColorScale << c.blue() * kColorScale;
        }
    }
    m_indices.reserve(6 * (nx - 1) * (ny - 1));
    const auto triangle = [&](unsigned a, unsigned b, unsigned c) {
        if (finite[a] && finite[b] && finite[c])
            m_indices << a << b << c;
    };
    for (int j = 0; j + 1 < ny; ++j) {
        for (int i = 0; i + 1 < nx; ++i) {
            const unsigned k = static_cast<unsigned>(j * nx + i);
            const unsigned up = k + static_cast<unsigned>(nx);
            triangle(k, k + 1, up + 1);
            triangle(k, up + 1, up);
        }
    }
    m_gridRowSize = nx;
    m_gridColumnSize = ny;
    return uploadMesh();
}

bool OpenGLScene::setMeshDataAsTexture(rkBase::MatrixDataArray* grid, double min, double max, const QRectF& rect)
{
    clearMesh();
    RKColormap map;
    if (!makeColormap(grid, min, max, map))
        return false;
    const int n = grid->rowCount();
    const int rows = usedColumns(grid, rect);
    if (n < 2 || rows < 2)
        return false;
    m_image = QImage(n, rows, QImage::Format_RGB32);
    if (m_image.isNull())
        return false;
    for (int j = 0; j < rows; ++j) {
        auto* line = reinterpret_cast<QRgb*>(m_image.scanLine(j));
        for (int i = 0; i < n; ++i)
            line[i] = pixelColor(map, grid->toDouble(i, j), m_clearColor);
    }
    m_modelViewMatrix.setToIdentity();
    m_vertices = {-1.0f, -1.0f, 0.0f, -1.0f, 1.0f, 0.0f, 1.0f, 1.0f, 0.0f, 1.0f, -1.0f, 0.0f};
    m_colors = QVector<float>(12, 1.0f);
    m_indices = {0, 1, 2, 0, 2, 3};
    m_gridRowSize = n;
    m_gridColumnSize = rows;
    return uploadMesh();
}

void OpenGLScene::clearMesh()
{
    m_gridRowSize = -1;
    m_gridColumnSize = -1;
    m_vertices.clear();
    m_colors.clear();
    m_indices.clear();
    m_image = QImage();
}

bool OpenGLScene::uploadMesh()
{
    if (!isValid())
        return false;
    makeCurrent();
    initialise();
    prepareVertexBuffers(m_vertices, m_colors, m_indices);
    return true;
}

void OpenGLScene::prepareVertexBuffersTest()
{
    clearMesh();
    m_modelViewMatrix.setToIdentity();
    m_vertices = {-1.0f, -1.0f, 0.0f, 1.0f, -1.0f, 0.0f, 1.0f, 1.0f, 0.0f, -1.0f, 1.0f, 0.0f};
    m_colors = {1.0f, 0.0f, 0.0f, 0.0f, 1.0f, 0.0f, 0.0f, 0.0f, 1.0f, 1.0f, 1.0f, 1.0f};
    m_indices = {0, 1, 2, 0, 2, 3};
    m_gridRowSize = 2;
    m_gridColumnSize = 2;
    uploadMesh();
}

void OpenGLScene::prepareVertexBuffers(const QVector<float>& vertices, const QVector<float>& colors,
                                       const QVector<unsigned int>& indices)
{
    if (!isValid())
        return;
    fillBuffer(m_vertexBuffer, vertices.constData(), vertices.size() * 4);
    fillBuffer(m_colorBuffer, colors.constData(), colors.size() * 4);
    fillBuffer(m_indexBuffer, indices.constData(), indices.size() * 4);
    if (m_textureMode) {
        const float uv[8] = {m_u0, m_v0, m_u0, m_v1, m_u1, m_v1, m_u1, m_v0};
        fillBuffer(m_textureCoordinateBuffer, uv, sizeof uv);
    }
    setupVertexArrayObject();
}

void OpenGLScene::setupVertexArrayObject()
{
    if (!m_program || !m_program->bind())
        return;
    m_vertexBuffer.bind();
    m_program->enableAttributeArray("vertexPosition");
    m_program->setAttributeBuffer("vertexPosition", GL_FLOAT, 0, 3);
    m_colorBuffer.bind();
    m_program->enableAttributeArray("vertexColor");
    m_program->setAttributeBuffer("vertexColor", GL_FLOAT, 0, 3);
    if (m_textureMode) {
        m_textureCoordinateBuffer.bind();
        m_program->enableAttributeArray("textureCoords");
        m_program->setAttributeBuffer("textureCoords", GL_FLOAT, 0, 2);
        m_program->setUniformValue("textureSampler", 0);
    }
    m_indexBuffer.bind();
    if (!m_textureMode)
        m_program->setUniformValue("modelViewMatrix", m_modelViewMatrix);
}

void OpenGLScene::prepareTexture()
{
    if (m_image.isNull())
        return;
    if (m_textureId)
        glDeleteTextures(1, &m_textureId);
    m_textureId = 0;
    glGenTextures(1, &m_textureId);
    glBindTexture(GL_TEXTURE_2D, m_textureId);
    // RGB32 keeps its bytes as B, G, R, A: hand GL true RGBA bytes.
    const QImage rgba = m_image.convertToFormat(QImage::Format_RGBA8888);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, rgba.width(), rgba.height(), 0, GL_RGBA, GL_UNSIGNED_BYTE,
                 rgba.constBits());
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    // Linear filtering must not blend the far edge of the grid into the near one.
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
}

void OpenGLScene::render()
{
    if (m_gridRowSize == -1 || !isValid())
        return;
    glClear(GL_COLOR_BUFFER_BIT);
    prepareVertexBuffers(m_vertices, m_colors, m_indices);
    // Without a linked program the legacy pipeline would draw the mesh in some default colour.
    if (!m_program || !m_program->isLinked() || !m_program->bind())
        return;
    prepareTexture();
    glDrawElements(GL_TRIANGLES, m_indices.size(), GL_UNSIGNED_INT, nullptr);
    m_program->release();
}

void OpenGLScene::initialise()
{
    if (m_program || !isValid())
        return;
    makeCurrent();
    m_program = new QGLShaderProgram(context(), this);
    prepareShaderProgram();
    createVAO();
}

void OpenGLScene::prepareShaderProgram()
{
    if (!m_program)
        return;
    const QString vertex = m_textureMode ? QStringLiteral(":/shaders/simpletexture.vert")
                                         : QStringLiteral(":/shaders/basic_mac.vert");
    const QString fragment = m_textureMode ? QStringLiteral(":/shaders/simpletexture.frag")
                                           : QStringLiteral(":/shaders/basic_mac.frag");
    if (!m_program->addShaderFromSourceFile(QGLShader::Vertex, vertex))
        qCritical().noquote() << "Could not compile vertex shader. Log:" << m_program->log();
    if (!m_program->addShaderFromSourceFile(QGLShader::Fragment, fragment))
        qCritical().noquote() << "Could not compile fragment shader. Log:" << m_program->log();
    if (!m_program->link())
        qCritical().noquote() << "Could not link shader program. Log:" << m_program->log();
    m_program->bind();
}

void OpenGLScene::initializeGL()
{
    initialise();
    qglClearColor(m_clearColor);
}

void OpenGLScene::paintGL()
{
    if (m_bufferSize.isEmpty())
        return;
    if (m_resizeNeeded || !m_frameBuffer) {
        delete m_frameBuffer;
        GLint largest = 0;
        glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
        QSize size = m_bufferSize;
        if (largest > 0)
            size = size.boundedTo(QSize(largest, largest));
        m_frameBuffer = new QGLFramebufferObject(size, QGLFramebufferObject::NoAttachment, GL_TEXTURE_2D, GL_RGBA);
        m_resizeNeeded = false;
    }
    const bool bound = m_frameBuffer->bind();
    glViewport(0, 0, m_frameBuffer->size().width(), m_frameBuffer->size().height());
    if (!bound)
        qCritical() << "Could not bind frame buffer";
    qglClearColor(m_clearColor);
    glClear(GL_COLOR_BUFFER_BIT);
    glLoadIdentity();
    render();
    m_frameBuffer->release();
}

void OpenGLScene::resizeGL(int width, int height)
{
    // A hidden scene's window has an arbitrary size; only a shown one is followed. The base
    // version is called so that a subclass resizing its window cannot feed back into here.
    if (isVisible())
        OpenGLScene::resize(QSize(width, height));
}

void OpenGLScene::resize(const QSize& size)
{
    m_bufferSize = size;
    m_resizeNeeded = true;
}

QImage OpenGLScene::renderToImage()
{
    if (!isValid() || m_bufferSize.isEmpty())
        return QImage();
    // updateGL() skips a widget that is not mapped, and this one never is.
    glDraw();
    makeCurrent();
    glFinish();
    if (!m_frameBuffer || !m_frameBuffer->bind())
        return QImage();
    const QSize size = m_frameBuffer->size();
    QImage image(size, QImage::Format_ARGB32);
    if (!image.isNull()) {
        glPixelStorei(GL_PACK_ALIGNMENT, 4);
        glReadPixels(0, 0, size.width(), size.height(), GL_RGBA, GL_UNSIGNED_BYTE, image.bits());
        // GL gives R, G, B, A bytes; ARGB32 wants them as one native 0xAARRGGBB word.
        for (int y = 0; y < size.height(); ++y) {
            auto* line = reinterpret_cast<quint32*>(image.scanLine(y));
            for (int x = 0; x < size.width(); ++x) {
                const quint32 v = line[x];
#if Q_BYTE_ORDER == Q_LITTLE_ENDIAN
                line[x] = ((v >> 16) & 0xffu) | ((v & 0xffu) << 16) | (v & ~0xff00ffu);
#else
                line[x] = (v >> 8) | (v << 24);
#endif
            }
        }
    }
    m_frameBuffer->release();
    return image;
}

void OpenGLScene::cleanup()
{
    if (!isValid())
        return;
    makeCurrent();
    delete m_frameBuffer;
    m_frameBuffer = nullptr;
    m_resizeNeeded = true;
    delete m_program;
    m_program = nullptr;
    m_vertexBuffer.destroy();
    m_colorBuffer.destroy();
    m_indexBuffer.destroy();
    m_textureCoordinateBuffer.destroy();
    if (m_textureId)
        glDeleteTextures(1, &m_textureId);
    m_textureId = 0;
    deleteVAO();
    doneCurrent();
}

void OpenGLScene::createVAO()
{
    if (!isValid() || m_vertexArrayId)
        return;
    using GenVertexArrays = void(GLAPIENTRY*)(GLsizei, GLuint*);
    using BindVertexArray = void(GLAPIENTRY*)(GLuint);
    const auto generate =
        reinterpret_cast<GenVertexArrays>(context()->getProcAddress(QStringLiteral("glGenVertexArrays")));
    const auto bind = reinterpret_cast<BindVertexArray>(context()->getProcAddress(QStringLiteral("glBindVertexArray")));
    if (generate && bind) {
        generate(1, &m_vertexArrayId);
        bind(m_vertexArrayId);
    }
}

void OpenGLScene::deleteVAO()
{
    if (!isValid() || !m_vertexArrayId)
        return;
    using DeleteVertexArrays = void(GLAPIENTRY*)(GLsizei, const GLuint*);
    const auto remove =
        reinterpret_cast<DeleteVertexArrays>(context()->getProcAddress(QStringLiteral("glDeleteVertexArrays")));
    if (remove)
        remove(1, &m_vertexArrayId);
    m_vertexArrayId = 0;
}

void OpenGLScene::setUV(float u0, float v0, float u1, float v1)
{
    m_u0 = u0;
    m_v0 = v0;
    m_u1 = u1;
    m_v1 = v1;
}

void OpenGLScene::setTextureMode(bool on)
{
    if (on == m_textureMode)
        return;
    m_textureMode = on;
    clearMesh();
    // The program is built for one mode; the next initialise() builds the other.
    if (m_program && isValid()) {
        makeCurrent();
        delete m_program;
        m_program = nullptr;
    }
}

QSize OpenGLScene::frameBufferSize() const
{
    return m_frameBuffer ? m_frameBuffer->size() : QSize();
}
