#pragma once
// Reads an enhanced metafile back with libuemf and checks what every viewer relies on: the
// header (signature, byte and record counts), each record's size and libuemf's record safety
// check, the end record, and the life of every object (created before it is selected, never
// deleted while selected, every one deleted before the end). It also writes each record as one
// short line, so that tests compare what was written with what a painter asked for.

#include <QByteArray>
#include <QString>
#include <QStringList>

extern "C" {
#include <uemf.h>
#include <uemf_safe.h>
}

#include <cstring>
#include <map>
#include <vector>

struct EmfRecord {
    uint32_t type = 0;
    uint32_t size = 0;
    const char* data = nullptr;
    template <class T>
    const T* as() const { return reinterpret_cast<const T*>(data); }
};

struct EmfFile {
    QString error; // empty: the file passed every check
    std::vector<EmfRecord> records;
    QStringList lines;
    U_EMRHEADER header{};
    bool ok() const { return error.isEmpty(); }
    // The lines that start with the prefix.
    QStringList linesStarting(const QString& prefix) const
    {
        QStringList out;
        for (const QString& l : lines)
            if (l.startsWith(prefix))
                out << l;
        return out;
    }
    int count(uint32_t type) const
    {
        int n = 0;
        for (const EmfRecord& r : records)
            n += r.type == type;
        return n;
    }
};

namespace emfrecords {

inline QString hex(uint32_t colour) { return QString::asprintf("%06x", colour & 0xffffff); }

inline uint32_t colour(const U_COLORREF& c) { return uint32_t(c.Red) | uint32_t(c.Green) << 8 | uint32_t(c.Blue) << 16; }

inline QString pointList16(const U_POINT16* p, uint32_t n)
{
    QStringList out;
    for (uint32_t i = 0; i < n; ++i)
        out << QStringLiteral("%1,%2").arg(p[i].x).arg(p[i].y);
    return out.join(QLatin1Char(' '));
}

inline QString pointList32(const U_POINTL* p, uint32_t n)
{
    QStringList out;
    for (uint32_t i = 0; i < n; ++i)
        out << QStringLiteral("%1,%2").arg(p[i].x).arg(p[i].y);
    return out.join(QLatin1Char(' '));
}

// One line per record; the common drawing and state records in full, the rest by name.
inline QString describe(const EmfRecord& r)
{
    switch (r.type) {
    case U_EMR_SETBKMODE: return QStringLiteral("BKMODE %1").arg(r.as<U_EMRSETBKMODE>()->iMode);
    case U_EMR_SETMAPMODE: return QStringLiteral("MAPMODE %1").arg(r.as<U_EMRSETMAPMODE>()->iMode);
    case U_EMR_SETPOLYFILLMODE: return QStringLiteral("FILLMODE %1").arg(r.as<U_EMRSETPOLYFILLMODE>()->iMode);
    case U_EMR_SETTEXTALIGN: return QStringLiteral("TEXTALIGN %1").arg(r.as<U_EMRSETTEXTALIGN>()->iMode);
    case U_EMR_SETTEXTCOLOR: return QStringLiteral("TEXTCOLOR ") + hex(colour(r.as<U_EMRSETTEXTCOLOR>()->crColor));
    case U_EMR_SETBKCOLOR: return QStringLiteral("BKCOLOR ") + hex(colour(r.as<U_EMRSETBKCOLOR>()->crColor));
    case U_EMR_MOVETOEX: return QStringLiteral("MOVETO %1,%2").arg(r.as<U_EMRMOVETOEX>()->ptl.x).arg(r.as<U_EMRMOVETOEX>()->ptl.y);
    case U_EMR_LINETO: return QStringLiteral("LINETO %1,%2").arg(r.as<U_EMRLINETO>()->ptl.x).arg(r.as<U_EMRLINETO>()->ptl.y);
    case U_EMR_SELECTOBJECT: {
        const uint32_t i = r.as<U_EMRSELECTOBJECT>()->ihObject;
        return i & U_STOCK_OBJECT ? QStringLiteral("SELECT stock %1").arg(i & 0xff) : QStringLiteral("SELECT %1").arg(i);
    }
    case U_EMR_DELETEOBJECT: return QStringLiteral("DELETE %1").arg(r.as<U_EMRDELETEOBJECT>()->ihObject);
    case U_EMR_CREATEPEN: {
        const auto* p = r.as<U_EMRCREATEPEN>();
        return QStringLiteral("PEN %1 style %2 width %3 ").arg(p->ihPen).arg(p->lopn.lopnStyle).arg(p->lopn.lopnWidth.x)
               + hex(colour(p->lopn.lopnColor));
    }
    case U_EMR_CREATEBRUSHINDIRECT: {
        const auto* b = r.as<U_EMRCREATEBRUSHINDIRECT>();
        return QStringLiteral("BRUSH %1 style %2 hatch %3 ").arg(b->ihBrush).arg(b->lb.lbStyle).arg(b->lb.lbHatch)
               + hex(colour(b->lb.lbColor));
    }
    case U_EMR_CREATEMONOBRUSH: return QStringLiteral("MONOBRUSH %1").arg(r.as<U_EMRCREATEMONOBRUSH>()->ihBrush);
    case U_EMR_EXTCREATEFONTINDIRECTW: {
        const auto* f = r.as<U_EMREXTCREATEFONTINDIRECTW>();
        const U_LOGFONT& lf = f->elfw.elfLogFont;
        int n = 0;
        while (n < U_LF_FACESIZE && lf.lfFaceName[n])
            ++n;
        return QStringLiteral("FONT %1 height %2 weight %3 italic %4 face %5")
            .arg(f->ihFont).arg(lf.lfHeight).arg(lf.lfWeight).arg(lf.lfItalic)
            .arg(QString::fromUtf16(reinterpret_cast<const ushort*>(lf.lfFaceName), n));
    }
    case U_EMR_ELLIPSE: {
        const U_RECTL& b = r.as<U_EMRELLIPSE>()->rclBox;
        return QStringLiteral("ELLIPSE %1,%2 %3,%4").arg(b.left).arg(b.top).arg(b.right).arg(b.bottom);
    }
    case U_EMR_POLYGON16:
    case U_EMR_POLYLINE16: {
        const auto* p = r.as<U_EMRPOLYLINE16>();
        return QString::fromLatin1(r.type == U_EMR_POLYGON16 ? "POLYGON " : "POLYLINE ") + pointList16(p->apts, p->cpts);
    }
    case U_EMR_POLYGON:
    case U_EMR_POLYLINE: {
        const auto* p = r.as<U_EMRPOLYLINE>();
        return QString::fromLatin1(r.type == U_EMR_POLYGON ? "POLYGON32 " : "POLYLINE32 ") + pointList32(p->aptl, p->cptl);
    }
    case U_EMR_EXTSELECTCLIPRGN: {
        const auto* c = r.as<U_EMREXTSELECTCLIPRGN>();
        if (c->cbRgnData == 0)
            return QStringLiteral("CLIP mode %1 none").arg(c->iMode);
        const U_RGNDATAHEADER& h = c->RgnData->rdh;
        return QStringLiteral("CLIP mode %1 rects %2 bound %3,%4 %5,%6")
            .arg(c->iMode).arg(h.nCount).arg(h.rclBounds.left).arg(h.rclBounds.top).arg(h.rclBounds.right)
            .arg(h.rclBounds.bottom);
    }
    case U_EMR_EXTTEXTOUTW: {
        const auto* t = r.as<U_EMREXTTEXTOUTW>();
        const QString text = QString::fromUtf16(reinterpret_cast<const ushort*>(r.data + t->emrtext.offString),
                                                int(t->emrtext.nChars));
        return QStringLiteral("TEXT %1,%2 ").arg(t->emrtext.ptlReference.x).arg(t->emrtext.ptlReference.y) + text;
    }
    case U_EMR_STRETCHBLT: {
        const auto* s = r.as<U_EMRSTRETCHBLT>();
        return QStringLiteral("STRETCHBLT %1,%2 %3x%4 from %5x%6 rop %7")
            .arg(s->Dest.x).arg(s->Dest.y).arg(s->cDest.x).arg(s->cDest.y).arg(s->cSrc.x).arg(s->cSrc.y)
            .arg(s->dwRop, 0, 16);
    }
    default: return QString::fromLatin1(U_emr_names(r.type)).remove(QStringLiteral("U_EMR_"));
    }
}

inline bool isCreation(uint32_t type)
{
    return type == U_EMR_CREATEPEN || type == U_EMR_CREATEBRUSHINDIRECT || type == U_EMR_EXTCREATEFONTINDIRECTW
           || type == U_EMR_CREATEMONOBRUSH || type == U_EMR_CREATEDIBPATTERNBRUSHPT || type == U_EMR_EXTCREATEPEN;
}

// The kind of object a creation makes: 0 pen, 1 brush, 2 font; and of a stock index.
inline int kindOfCreation(uint32_t type)
{
    if (type == U_EMR_CREATEPEN || type == U_EMR_EXTCREATEPEN)
        return 0;
    return type == U_EMR_EXTCREATEFONTINDIRECTW ? 2 : 1;
}
inline int kindOfStock(uint32_t index) { return index <= 5 ? 1 : index <= 8 ? 0 : 2; }

} // namespace emfrecords

// The whole check; the bytes must outlive the result.
inline EmfFile readEmf(const QByteArray& bytes)
{
    using namespace emfrecords;
    EmfFile file;
    const char* base = bytes.constData();
    const std::size_t total = std::size_t(bytes.size());
    if (total < sizeof(U_EMRHEADER) - sizeof(U_SIZEL) - 12) {
        file.error = QStringLiteral("too short: %1 bytes").arg(total);
        return file;
    }
    std::memcpy(&file.header, base, std::min(total, sizeof(U_EMRHEADER)));
    if (file.header.emr.iType != U_EMR_HEADER || file.header.dSignature != U_ENHMETA_SIGNATURE) {
        file.error = QStringLiteral("no metafile header or signature");
        return file;
    }
    if (file.header.nBytes != total) {
        file.error = QStringLiteral("header says %1 bytes, file has %2").arg(file.header.nBytes).arg(total);
        return file;
    }
    std::map<uint32_t, int> created; // index -> kind
    int selected[3] = {-1, -1, -1};
    uint32_t maxIndex = 0;
    std::size_t offset = 0;
    while (offset < total) {
        if (total - offset < 8) {
            file.error = QStringLiteral("truncated record at %1").arg(offset);
            return file;
        }
        EmfRecord r;
        std::memcpy(&r.type, base + offset, 4);
        std::memcpy(&r.size, base + offset + 4, 4);
        r.data = base + offset;
        if (r.size < 8 || r.size % 4 || r.size > total - offset) {
            file.error = QStringLiteral("record %1 at %2 has size %3").arg(file.records.size()).arg(offset).arg(r.size);
            return file;
        }
        if (!U_emf_record_safe(r.data)) {
            file.error = QStringLiteral("record %1 (%2) is not safe").arg(file.records.size()).arg(U_emr_names(r.type));
            return file;
        }
        file.records.push_back(r);
        file.lines << describe(r);
        if (isCreation(r.type)) {
            uint32_t index;
            std::memcpy(&index, r.data + 8, 4);
            if (index == 0 || created.count(index)) {
                file.error = QStringLiteral("object %1 created twice or as 0").arg(index);
                return file;
            }
            created[index] = kindOfCreation(r.type);
            maxIndex = std::max(maxIndex, index);
        } else if (r.type == U_EMR_SELECTOBJECT) {
            const uint32_t index = r.as<U_EMRSELECTOBJECT>()->ihObject;
            if (index & U_STOCK_OBJECT) {
                selected[kindOfStock(index & 0xff)] = -1;
            } else if (!created.count(index)) {
                file.error = QStringLiteral("object %1 selected but not created").arg(index);
                return file;
            } else {
                selected[created[index]] = int(index);
            }
        } else if (r.type == U_EMR_DELETEOBJECT) {
            const uint32_t index = r.as<U_EMRDELETEOBJECT>()->ihObject;
            if (!created.count(index)) {
                file.error = QStringLiteral("object %1 deleted but not created").arg(index);
                return file;
            }
            if (selected[created[index]] == int(index)) {
                file.error = QStringLiteral("object %1 deleted while selected").arg(index);
                return file;
            }
            created.erase(index);
        }
        offset += r.size;
    }
    if (file.records.size() != file.header.nRecords)
        file.error = QStringLiteral("header says %1 records, file has %2").arg(file.header.nRecords).arg(file.records.size());
    else if (file.records.back().type != U_EMR_EOF)
        file.error = QStringLiteral("last record is not the end");
    else if (!created.empty())
        file.error = QStringLiteral("%1 objects never deleted").arg(created.size());
    else if (maxIndex >= file.header.nHandles)
        file.error = QStringLiteral("object %1 beyond the header's %2 handles").arg(maxIndex).arg(file.header.nHandles);
    return file;
}
