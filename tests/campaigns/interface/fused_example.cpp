// What check_contraction.py has to find: a product that becomes one instruction with a sum.
extern "C" float productAndSum(float a, float b, float c) {
    return a * b + c;
}
extern "C" float productAlone(float a, float b) {
    return a * b;
}
