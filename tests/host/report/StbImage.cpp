// stb_image, the PNG reader that the tests read the report's images back with.
#define STBI_ONLY_PNG
#define STB_IMAGE_IMPLEMENTATION
#include <stb_image.h>
