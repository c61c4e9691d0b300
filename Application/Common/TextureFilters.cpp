#include "Common/TextureFilters.h"

QString getTextureOpenFilter()
{
    return "All Supported Image Files (*.mox *.ktx *.dds *.png *.bmp *.jpg *.jpeg *.tga);;"
           "Moxwell Textures (*.mox);;"
           "Khronos Textures (*.ktx);;"
           "Direct Draw Surfaces (*.dds);;"
           "Bitmap Files (*.bmp);;"
           "Portable Network Graphics (*.png);;"
           "JPEG Files (*.jpg *.jpeg);;"
           "Targa Files (*.tga);;"
           "All Files (*)";
}
