#include "EMFDevice.h"

#include "EMFEngine.h"

#include <climits>

namespace rkBase {

EMFDevice::EMFDevice(const QString& fileName) : m_engine(std::make_unique<EMFEngine>(fileName)) {}

EMFDevice::~EMFDevice() = default;

QPaintEngine* EMFDevice::paintEngine() const { return m_engine.get(); }

void EMFDevice::setClipRect(const QRect& rect)
{
    m_clipRect = rect;
    m_engine->setClipRect(rect);
}

void EMFDevice::setCircularClip(bool on) { m_engine->setCircularClip(on); }

void EMFDevice::setTextAlignmentLeft(bool on) { m_engine->setTextAlignmentLeft(on); }

void EMFDevice::observeTransform(bool on) { m_engine->observeTransform(on); }

gdi::HENHMETAFILE EMFDevice::handle() const { return m_engine->handle(); }

QByteArray EMFDevice::bytes() const
{
    const gdi::HENHMETAFILE metafile = handle();
    const gdi::UINT size = gdi::GetEnhMetaFileBits(metafile, 0, nullptr);
    QByteArray out(int(size), Qt::Uninitialized);
    if (size)
        gdi::GetEnhMetaFileBits(metafile, size, reinterpret_cast<gdi::BYTE*>(out.data()));
    return out;
}

int EMFDevice::metric(PaintDeviceMetric metric) const
{
    // The picture is as large as the clip's far corner, or a screen when there is no clip.
    const int width = m_clipRect.isValid() ? std::max(m_clipRect.right() + 1, 1) : 1920;
    const int height = m_clipRect.isValid() ? std::max(m_clipRect.bottom() + 1, 1) : 1440;
    switch (metric) {
    case PdmWidth: return width;
    case PdmHeight: return height;
    case PdmWidthMM: return width * 254 / 960;
    case PdmHeightMM: return height * 254 / 960;
    case PdmDpiX:
    case PdmDpiY:
    case PdmPhysicalDpiX:
    case PdmPhysicalDpiY: return 96;
    case PdmDepth: return 32;
    case PdmNumColors: return INT_MAX;
    case PdmDevicePixelRatio: return 1;
    case PdmDevicePixelRatioScaled: return int(QPaintDevice::devicePixelRatioFScale());
    default: return 0;
    }
}

} // namespace rkBase
