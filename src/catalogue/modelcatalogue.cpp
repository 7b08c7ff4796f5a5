#include "modelcatalogue.h"

ModelCatalogue &Catalogue()
{
    static ModelCatalogue catalogue;
    return catalogue;
}
