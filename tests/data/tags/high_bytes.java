class Café { int été; void naïve() { } }
