#include "VarnetApp/Components/Mascot/MascotParts.h"

namespace varnet {

namespace {

using Layer = MascotLayer;
using Level = MascotLevel;
using namespace mascotPalette;

constexpr MascotPart focusedParts[] = {
    {Layer::body, flame, 0, Level::tiny,
     "M184 490 C116 490 78 446 78 384 C78 316 120 282 130 226 C135 194 130 166 118 142 C154 156 180 178 196 "
     "208 C214 168 236 120 238 78 C240 50 246 26 256 2 C292 60 312 108 322 158 C328 190 342 214 360 240 C400 "
     "290 436 322 436 384 C436 446 396 490 330 490 C298 490 216 490 184 490 Z"},
    {Layer::core, ember, 0, Level::compact,
     "M198 466 C144 466 110 432 110 384 C110 330 166 306 204 258 C232 222 258 172 264 112 C290 158 298 214 "
     "318 252 C350 298 404 330 404 384 C404 432 370 466 316 466 C290 466 228 466 198 466 Z"},
    {Layer::highlight, shine, 0, Level::rich,
     "M264 150 C276 184 282 214 292 240 C298 254 288 262 268 262 C248 262 238 254 244 240 C256 214 262 184 "
     "264 150 Z"},
    {Layer::brow, ink, 0, Level::compact,
     "M234 326 C255 332 264 299 242 294 C206 284 168 279 132 302 C171 306 197 316 234 326 Z"},
    {Layer::brow, ink, 0, Level::compact,
     "M282 326 C261 332 252 299 274 294 C310 284 348 279 384 302 C345 306 319 316 282 326 Z"},
    {Layer::eye, white, 0, Level::compact,
     "M142 337 L234 343 C234 360 214 374 188 374 C162 374 142 360 142 337 Z"},
    {Layer::eye, ink, 0, Level::compact,
     "M178 339 L214 342 C214 359 206 371 196 371 C186 371 178 359 178 339 Z"},
    {Layer::eye, ink, 14, Level::compact, "M135 337 L241 343"},
    {Layer::eye, white, 0, Level::compact,
     "M282 343 L374 337 C374 360 354 374 328 374 C302 374 282 360 282 343 Z"},
    {Layer::eye, ink, 0, Level::compact,
     "M302 342 L338 339 C338 359 330 371 320 371 C310 371 302 359 302 342 Z"},
    {Layer::eye, ink, 14, Level::compact, "M275 343 L381 337"},
    {Layer::mouth, ink, 15, Level::mid, "M234 424 L282 424"},
};

constexpr MascotPart sleepyParts[] = {
    {Layer::body, flame, 0, Level::tiny,
     "M172 490 C96 490 44 456 43 398 C40 336 91 324 92 275 C90 251 76 233 52 221 C104 213 147 231 171 269 "
     "C159 231 175 208 165 174 C157 146 132 129 100 125 C178 99 265 133 291 196 C303 223 323 243 353 267 "
     "C410 307 462 342 465 402 C466 458 418 490 342 490 C300 490 212 490 172 490 Z"},
    {Layer::lick, flame, 0, Level::tiny,
     "M344 108 L456 108 L456 132 L402 190 L466 190 L456 218 L342 218 L342 194 L396 136 L354 136 Z M428 24 "
     "L500 24 L500 42 L468 78 L508 78 L501 98 L424 98 L424 80 L456 44 L435 44 Z"},
    {Layer::core, ember, 0, Level::compact,
     "M190 466 C124 466 80 440 79 398 C77 350 138 340 178 305 C208 277 227 247 216 204 C255 225 275 263 311 "
     "291 C357 324 427 348 429 402 C430 442 390 466 322 466 C290 466 220 466 190 466 Z"},
    {Layer::highlight, shine, 0, Level::rich,
     "M221 247 C245 265 258 285 278 301 C287 315 271 322 249 322 C225 322 209 315 212 303 C219 287 227 269 "
     "221 247 Z"},
    {Layer::brow, ink, 0, Level::compact,
     "M205 336 C222 340 227 314 210 311 C174 303 125 315 109 351 C140 330 169 328 205 336 Z"},
    {Layer::brow, ink, 0, Level::compact,
     "M273 327 C258 335 247 311 262 304 C295 288 346 288 371 319 C335 307 306 311 273 327 Z"},
    {Layer::eye, ink, 16, Level::compact, "M123 384 C147 403 197 397 216 373"},
    {Layer::eye, ink, 16, Level::compact, "M277 365 C302 384 352 378 371 354"},
    {Layer::mouth, ink, 0, Level::mid,
     "M242 432 C241 425 249 418 258 417 C267 416 275 421 276 428 C277 435 270 441 261 443 C252 444 243 439 "
     "242 432 Z"},
};

constexpr MascotPart meltingParts[] = {
    {Layer::puddle, seat, 0, Level::tiny,
     "M12 474 C12 452 62 446 104 450 C190 456 320 456 404 450 C452 446 502 452 502 476 C502 492 462 496 400 "
     "496 L120 496 C60 496 12 494 12 474 Z"},
    {Layer::body, softFlame, 0, Level::tiny,
     "M104 486 C62 486 98 448 110 400 C118 356 84 352 80 388 C76 424 36 422 36 386 C38 308 110 275 178 297 "
     "C174 261 202 239 216 208 C244 141 456 129 468 285 C470 322 422 322 420 287 C412 243 346 221 334 259 "
     "C328 300 386 330 400 402 C408 446 464 486 420 486 C300 486 214 486 104 486 Z"},
    {Layer::lick, softFlame, 0, Level::tiny,
     "M444 340 C453 365 471 377 471 391 C471 407 459 418 444 418 C429 418 417 407 417 391 C417 377 435 365 "
     "444 340 Z"},
    {Layer::core, softEmber, 0, Level::compact,
     "M146 470 C112 470 128 438 136 412 C148 370 196 352 226 322 C252 297 268 269 268 238 C290 266 296 300 "
     "318 326 C352 358 372 386 380 416 C388 442 402 470 364 470 C290 470 220 470 146 470 Z"},
    {Layer::core, softEmber, 0, Level::mid,
     "M168 440 L204 440 L204 474 C204 490 168 490 168 474 Z M318 440 L346 440 L346 480 C346 494 318 494 318 "
     "480 Z"},
    {Layer::highlight, shine, 0, Level::rich,
     "M256 200 C290 162 404 151 446 231 C398 180 320 184 282 211 C266 223 248 215 256 200 Z"},
    {Layer::highlight, shine, 0, Level::rich,
     "M56 378 C60 338 88 314 126 306 C96 324 78 344 72 380 C70 392 54 390 56 378 Z"},
    {Layer::brow, ink, 0, Level::compact,
     "M217 363 C236 359 230 330 211 333 C176 340 141 356 126 392 C157 374 182 370 217 363 Z"},
    {Layer::brow, ink, 0, Level::compact,
     "M285 351 C266 350 267 320 287 321 C323 323 366 345 374 384 C347 359 321 353 285 351 Z"},
    {Layer::eye, white, 0, Level::compact,
     "M146 385 L226 399 C226 414 208 428 186 428 C164 428 146 414 146 385 Z"},
    {Layer::eye, ink, 0, Level::compact,
     "M166 389 L202 395 C202 408 194 420 184 420 C174 420 166 408 166 389 Z"},
    {Layer::eye, ink, 14, Level::compact, "M139 384 L233 400"},
    {Layer::eye, white, 0, Level::compact,
     "M264 388 L348 416 C348 428 330 446 306 446 C282 446 264 428 264 388 Z"},
    {Layer::eye, ink, 0, Level::compact,
     "M285 395 L323 408 C323 422 315 435 304 435 C293 435 285 422 285 395 Z"},
    {Layer::eye, ink, 14, Level::compact, "M257 386 L355 418"},
    {Layer::mouth, ink, 14, Level::mid, "M208 456 C218 446 230 446 240 452 C252 460 268 464 284 462"},
};

constexpr MascotPart frazzledParts[] = {
    {Layer::body, flame, 0, Level::tiny,
     "M180 490 C110 490 66 450 66 392 Q62 368 26 360 Q70 348 82 322 Q68 276 24 246 Q88 250 114 270 Q106 192 "
     "62 126 Q134 156 158 214 Q166 140 138 60 Q202 110 210 178 Q238 100 232 6 Q278 80 270 166 Q300 108 346 "
     "62 Q330 140 324 190 Q354 182 402 206 Q364 220 362 248 Q402 236 476 258 Q418 280 410 306 Q438 322 490 "
     "358 Q450 360 450 392 C450 450 404 490 334 490 Z"},
    {Layer::lick, flame, 0, Level::tiny, "M432 8 L488 28 L458 72 L506 82 L408 172 L434 114 L390 104 Z"},
    {Layer::core, ember, 0, Level::compact,
     "M196 466 C138 466 100 432 100 386 Q104 356 138 334 Q150 306 140 276 Q176 284 188 296 Q206 262 200 222 "
     "Q230 238 238 262 Q262 206 254 146 Q286 188 284 250 Q302 232 326 222 Q318 252 326 288 Q350 280 378 288 "
     "Q360 308 372 332 Q416 350 416 386 C416 432 376 466 318 466 Z"},
    {Layer::brow, ink, 22, Level::compact, "M132 296 L164 268 L186 290 L226 262"},
    {Layer::brow, ink, 22, Level::compact, "M284 276 L314 250 L336 278 L382 262"},
    {Layer::eye, white, 0, Level::compact,
     "M140 352 C140 325 161 304 188 304 C215 304 236 325 236 352 C236 379 215 400 188 400 C161 400 140 379 "
     "140 352 Z"},
    {Layer::eye, ink, 0, Level::compact,
     "M178 356 C178 349 183 344 190 344 C197 344 202 349 202 356 C202 363 197 368 190 368 C183 368 178 363 "
     "178 356 Z"},
    {Layer::eye, white, 0, Level::compact,
     "M286 350 C286 331 301 316 320 316 C339 316 354 331 354 350 C354 369 339 384 320 384 C301 384 286 369 "
     "286 350 Z"},
    {Layer::eye, ink, 0, Level::compact,
     "M305 352 C305 345 311 339 318 339 C325 339 331 345 331 352 C331 359 325 365 318 365 C311 365 305 359 "
     "305 352 Z"},
    {Layer::mouth, ink, 14, Level::mid, "M192 436 L218 420 L240 440 L264 420 L288 440 L320 420"},
};

constexpr MascotPart panicParts[] = {
    {Layer::body, hotFlame, 0, Level::tiny,
     "M196 486 C140 486 104 446 104 388 C104 316 138 286 130 210 C126 160 110 120 88 86 C148 108 186 148 196 "
     "202 C204 156 224 132 226 92 C228 60 220 30 206 2 C280 36 318 92 318 150 C318 184 324 210 340 236 C376 "
     "288 412 322 412 388 C412 446 374 486 318 486 C290 486 226 486 196 486 Z"},
    {Layer::lick, hotFlame, 0, Level::tiny,
     "M396 28 C408 12 448 10 464 24 C470 70 450 114 428 148 C406 114 390 72 396 28 Z M428 168 C446 168 456 "
     "179 456 193 C456 208 446 218 428 218 C410 218 400 208 400 193 C400 179 410 168 428 168 Z"},
    {Layer::core, hotEmber, 0, Level::compact,
     "M206 464 C160 464 130 432 130 388 C130 334 170 304 200 254 C228 214 250 172 250 116 C284 156 288 212 "
     "304 250 C330 294 386 330 386 388 C386 432 356 464 308 464 C286 464 232 464 206 464 Z"},
    {Layer::highlight, shine, 0, Level::rich,
     "M236 34 C274 60 298 100 298 148 C298 164 302 178 308 190 C290 176 284 160 282 144 C280 100 264 62 236 "
     "34 Z"},
    {Layer::brow, ink, 0, Level::compact,
     "M220 245 C236 248 241 222 224 219 C193 213 143 237 142 272 C162 246 188 239 220 245 Z"},
    {Layer::brow, ink, 0, Level::compact,
     "M292 245 C276 248 271 222 288 219 C319 213 369 237 370 272 C350 246 324 239 292 245 Z"},
    {Layer::eye, white, 0, Level::compact,
     "M148 322 C148 292 169 268 196 268 C223 268 244 292 244 322 C244 352 223 376 196 376 C169 376 148 352 "
     "148 322 Z"},
    {Layer::eye, ink, 0, Level::compact,
     "M187 324 C187 317 193 311 200 311 C207 311 213 317 213 324 C213 331 207 337 200 337 C193 337 187 331 "
     "187 324 Z"},
    {Layer::eye, white, 0, Level::compact,
     "M268 322 C268 292 289 268 316 268 C343 268 364 292 364 322 C364 352 343 376 316 376 C289 376 268 352 "
     "268 322 Z"},
    {Layer::eye, ink, 0, Level::compact,
     "M299 324 C299 317 305 311 312 311 C319 311 325 317 325 324 C325 331 319 337 312 337 C305 337 299 331 "
     "299 324 Z"},
    {Layer::mouth, ink, 0, Level::compact,
     "M256 388 C284 388 300 410 300 430 C300 448 284 454 256 454 C228 454 212 448 212 430 C212 410 228 388 "
     "256 388 Z"},
    {Layer::mouth, hotFlame, 0, Level::rich,
     "M230 446 C236 432 246 428 256 428 C266 428 276 432 282 446 C274 450 266 452 256 452 C246 452 238 450 "
     "230 446 Z"},
};

} // namespace

std::span<const MascotPart> mascotParts(FlameExpression expression) {
    switch (expression) {
    case FlameExpression::focused:
        return focusedParts;
    case FlameExpression::sleepy:
        return sleepyParts;
    case FlameExpression::melting:
        return meltingParts;
    case FlameExpression::frazzled:
        return frazzledParts;
    case FlameExpression::panic:
        return panicParts;
    default:
        return seatedParts(expression);
    }
}

} // namespace varnet
