#include "OpenGLDebugScene.h"

OpenGLDebugScene::OpenGLDebugScene(QGLFormat format, QWidget* parent)
    : OpenGLScene(format, parent)
{
    setAutoBufferSwap(true);
}

void OpenGLDebugScene::resize(const QSize& size)
{
    OpenGLScene::resize(size);
    QWidget::resize(size);
}

void OpenGLDebugScene::paintGL()
{
    const qreal ratio = devicePixelRatioF();
    glViewport(0, 0, qRound(width() * ratio), qRound(height() * ratio));
    qglClearColor(clearColor());
    glClear(GL_COLOR_BUFFER_BIT);
    glLoadIdentity();
    render();
}

QImage OpenGLDebugScene::renderToImage()
{
    if (!isValid())
        return QImage();
    // The back buffer is read before the swap: what a front buffer holds after it is up to the
    // window system (software GL on a virtual X server gives black).
    const bool swap = autoBufferSwap();
    setAutoBufferSwap(false);
    glDraw();
    makeCurrent();
    glFinish();
    glReadBuffer(doubleBuffer() ? GL_BACK : GL_FRONT);
    const QImage image = grabFrameBuffer().convertToFormat(QImage::Format_ARGB32);
    setAutoBufferSwap(swap);
    if (swap && doubleBuffer())
        swapBuffers();
    return image;
}
