// rejected: calling a private constructor of class 'QString'
#include <QString>

QString name()
{
    return "Moorline";
}
