#pragma once

#include <QImage>
#include <QString>

namespace velmora::printing {

// A picture file as it is: fails with the reason when it is missing, a folder, cut short or
// no picture at all, rather than printing part of it.
QImage loadPicture(const QString& path);

} // namespace velmora::printing
