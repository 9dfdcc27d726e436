#pragma once
// The grid renderer drawing into its own window instead of a frame buffer, to look at what the
// off-screen scene draws. Show it before rendering; its image is read from the window and is
// top-down, as the screen shows it.

#include "OpenGLScene.h"

class OpenGLDebugScene : public OpenGLScene
{
    Q_OBJECT
public:
    explicit OpenGLDebugScene(QGLFormat format, QWidget* parent = nullptr);

    // Resizes the window as well as the target.
    void resize(const QSize& size) override;
    QImage renderToImage() override;

protected:
    void paintGL() override;
};
