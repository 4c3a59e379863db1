// Points, sizes and rectangles with fractions, y downwards.
#ifndef LAMPBLACK_CARBON_HIGEOMETRY_H
#define LAMPBLACK_CARBON_HIGEOMETRY_H

typedef double CGFloat;

struct CGPoint {
    CGFloat x;
    CGFloat y;
};
typedef struct CGPoint CGPoint;

struct CGSize {
    CGFloat width;
    CGFloat height;
};
typedef struct CGSize CGSize;

struct CGRect {
    CGPoint origin;
    CGSize size;
};
typedef struct CGRect CGRect;

typedef CGPoint HIPoint;
typedef CGSize HISize;
typedef CGRect HIRect;

#endif
