#pragma once
// A paint device that writes an enhanced metafile: a painter drawing on it leaves GDI records
// (see EMFEngine), so that a chart reaches the clipboard or a file as vectors. With an empty
// file name the metafile stays in memory; handle() gives it once the painter has ended.
//
// The device is 96 dpi. Its clip rectangle (with an elliptic variant) is selected into the
// metafile before the first drawing record; it is independent of the painter's clip.

#include "EmfGdi.h"

#include <QByteArray>
#include <QPaintDevice>
#include <QRect>
#include <QString>

#include <memory>

namespace rkBase {

class EMFEngine;

class EMFDevice : public QPaintDevice
{
public:
    explicit EMFDevice(const QString& fileName);
    ~EMFDevice() override;

    QPaintEngine* paintEngine() const override;
    QRect clipRect() const { return m_clipRect; }
    void setClipRect(const QRect& rect);
    void setCircularClip(bool on);
    void setTextAlignmentLeft(bool on);
    void observeTransform(bool on);
    // The finished metafile, owned by the device; null before the painter ends or on failure.
    gdi::HENHMETAFILE handle() const;
    // The bytes of the finished metafile (empty when handle() is null).
    QByteArray bytes() const;

protected:
    int metric(PaintDeviceMetric metric) const override;

private:
    QRect m_clipRect;
    std::unique_ptr<EMFEngine> m_engine;
};

} // namespace rkBase
