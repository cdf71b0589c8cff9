// Decoded samples on their way into a picture.
#pragma once

#include "picture.h"
#include "picture_reader.h"

/// Makes a picture of what `reader` decodes, upright, in grey or in its channels.
Picture collectPicture(PictureReader& reader, Channels channels);
