#include "VarnetApp/Components/Mascot/MascotParts.h"

namespace varnet {

namespace {

using Layer = MascotLayer;
using Level = MascotLevel;
using namespace mascotPalette;

// The flame as it sits most of the time; the two moods that lean it have theirs written out.
constexpr std::string_view baseBody =
    "M180 490 C110 490 66 446 66 382 C66 300 128 280 116 206 C111 178 98 156 80 138 C136 140 178 170 194 224 "
    "C194 176 242 152 246 100 C248 66 232 40 208 20 C290 30 342 92 334 154 C331 184 348 208 372 234 C416 282 "
    "450 318 450 382 C450 446 404 490 334 490 C300 490 214 490 180 490 Z";
constexpr std::string_view baseShade = "M449 366 C456 440 408 490 334 490 C290 490 230 490 196 490 C236 486 "
                                       "290 484 328 480 C396 474 438 432 449 366 Z";
constexpr std::string_view baseCore =
    "M196 466 C138 466 100 432 100 382 C100 324 160 304 204 258 C238 222 270 190 272 142 C302 176 302 220 "
    "330 252 C366 296 416 326 416 382 C416 432 376 466 318 466 C290 466 226 466 196 466 Z";
constexpr std::string_view crownSliver = "M264 46 C300 72 320 108 315 152 C314 168 318 182 328 198 C308 184 "
                                         "298 168 298 148 C298 108 288 74 264 46 Z";
constexpr std::string_view leftSliver = "M100 150 C136 158 164 184 181 224 C160 196 134 176 100 150 Z";
constexpr std::string_view browJet = "M268 178 C280 198 282 218 292 234 C299 247 289 256 271 256 C252 256 "
                                     "239 248 245 234 C252 218 264 204 268 178 Z";

constexpr MascotPart smugParts[] = {
    {Layer::body, flame, 0, Level::tiny, baseBody},
    {Layer::shade, seat, 0, Level::rich, baseShade},
    {Layer::lick, flame, 0, Level::tiny,
     "M372 164 C354 158 352 136 364 116 C382 84 420 64 454 74 C486 84 502 114 506 156 C486 132 462 120 438 "
     "124 C414 128 400 142 390 156 C385 164 379 166 372 164 Z"},
    {Layer::core, ember, 0, Level::compact, baseCore},
    {Layer::highlight, shine, 0, Level::rich, crownSliver},
    {Layer::highlight, shine, 0, Level::rich, leftSliver},
    {Layer::highlight, shine, 0, Level::rich, browJet},
    {Layer::brow, ink, 0, Level::compact,
     "M230 317 C250 324 261 294 242 287 C208 275 163 275 138 306 C173 298 197 305 230 317 Z"},
    {Layer::brow, ink, 0, Level::compact,
     "M283 291 C268 308 243 286 257 269 C283 239 367 236 380 278 C347 255 309 261 283 291 Z"},
    {Layer::eye, white, 0, Level::compact,
     "M148 332 L232 332 C232 358 214 376 190 376 C166 376 148 358 148 332 Z"},
    {Layer::eye, ink, 0, Level::compact,
     "M178 332 L222 332 C222 352 212 366 200 366 C188 366 178 352 178 332 Z"},
    {Layer::eye, ink, 14, Level::compact, "M141 332 L239 332"},
    {Layer::eye, white, 0, Level::compact,
     "M274 326 L362 326 C362 356 343 376 318 376 C293 376 274 356 274 326 Z"},
    {Layer::eye, ink, 0, Level::compact,
     "M308 326 L352 326 C352 349 342 365 330 365 C318 365 308 349 308 326 Z"},
    {Layer::eye, ink, 14, Level::compact, "M267 326 L369 326"},
    {Layer::mouth, ink, 14, Level::mid, "M222 422 C246 430 276 426 300 406"},
};

constexpr MascotPart suspiciousParts[] = {
    {Layer::body, flame, 0, Level::tiny,
     "M180 490 C110 490 66 446 64 382 C59 301 119 281 98 208 C89 180 73 159 52 141 C108 143 155 172 178 226 "
     "C172 178 216 155 211 104 C206 70 185 45 156 25 C240 35 305 96 308 157 C310 186 330 210 358 235 C407 "
     "283 444 319 448 382 C450 446 404 490 334 490 C300 490 214 490 180 490 Z"},
    {Layer::shade, seat, 0, Level::rich,
     "M446 366 C456 440 408 490 334 490 C290 490 230 490 196 490 C236 486 290 484 328 480 C396 474 438 432 "
     "446 366 Z"},
    {Layer::lick, flame, 0, Level::tiny,
     "M382 195 C360 215 328 182 350 161 C393 121 445 90 508 100 C454 126 424 155 382 195 Z"},
    {Layer::core, ember, 0, Level::compact,
     "M196 466 C138 466 100 432 98 382 C95 325 153 305 192 259 C222 224 250 192 244 145 C280 178 286 222 318 "
     "253 C358 297 411 327 414 382 C416 432 376 466 318 466 C290 466 226 466 196 466 Z"},
    {Layer::highlight, shine, 0, Level::rich,
     "M218 51 C259 76 286 111 289 155 C291 170 297 184 309 200 C287 186 275 170 271 151 C264 111 248 78 218 "
     "51 Z"},
    {Layer::highlight, shine, 0, Level::rich, "M74 153 C111 160 143 186 165 226 C141 198 112 178 74 153 Z"},
    {Layer::highlight, shine, 0, Level::rich,
     "M246 180 C261 200 266 220 278 235 C286 248 277 257 259 257 C240 257 226 249 231 235 C236 220 246 206 "
     "246 180 Z"},
    {Layer::brow, ink, 0, Level::compact,
     "M219 331 C240 335 247 302 225 297 C188 290 157 284 118 300 C155 311 182 323 219 331 Z"},
    {Layer::brow, ink, 0, Level::compact,
     "M279 317 C266 334 239 313 253 295 C277 264 335 242 370 268 C329 268 304 285 279 317 Z"},
    {Layer::eye, white, 0, Level::compact,
     "M122 337 L218 343 C218 357 197 368 170 368 C143 368 122 357 122 337 Z"},
    {Layer::eye, ink, 0, Level::compact,
     "M128 337 L160 339 C160 354 153 364 144 364 C135 364 128 354 128 337 Z"},
    {Layer::eye, ink, 14, Level::compact, "M115 337 L225 343"},
    {Layer::eye, white, 0, Level::compact,
     "M262 340 L358 332 C358 358 337 372 310 372 C283 372 262 358 262 340 Z"},
    {Layer::eye, ink, 0, Level::compact,
     "M267 340 L301 337 C301 358 294 371 284 371 C274 371 267 358 267 340 Z"},
    {Layer::eye, ink, 14, Level::compact, "M255 341 L365 331"},
    {Layer::extra, ink, 9, Level::mid, "M284 382 C302 390 326 390 344 380"},
    {Layer::extra, ink, 9, Level::mid, "M138 380 C156 388 184 388 202 380"},
    {Layer::mouth, ink, 14, Level::mid, "M188 430 C210 418 236 416 262 424"},
};

constexpr MascotPart sweatingParts[] = {
    {Layer::body, flame, 0, Level::tiny, baseBody},
    {Layer::shade, seat, 0, Level::rich, baseShade},
    {Layer::lick, water, 0, Level::tiny,
     "M424 52 C442 99 474 122 474 148 C474 177 452 198 424 198 C396 198 374 177 374 148 C374 122 407 99 424 "
     "52 Z"},
    {Layer::core, ember, 0, Level::compact, baseCore},
    {Layer::highlight, shine, 0, Level::rich, crownSliver},
    {Layer::highlight, shine, 0, Level::rich, leftSliver},
    {Layer::highlight, shine, 0, Level::rich, browJet},
    {Layer::brow, ink, 0, Level::compact,
     "M228 277 C247 277 248 247 228 247 C190 246 145 265 132 304 C163 281 190 276 228 277 Z"},
    {Layer::brow, ink, 0, Level::compact,
     "M284 277 C265 277 264 247 284 247 C322 246 367 265 380 304 C349 281 322 276 284 277 Z"},
    {Layer::eye, white, 0, Level::compact,
     "M152 344 C152 321 170 302 192 302 C214 302 232 321 232 344 C232 367 214 386 192 386 C170 386 152 367 "
     "152 344 Z"},
    {Layer::eye, ink, 0, Level::compact,
     "M192 340 C192 331 200 323 209 323 C218 323 226 331 226 340 C226 349 218 357 209 357 C200 357 192 349 "
     "192 340 Z"},
    {Layer::eye, white, 0, Level::compact,
     "M280 344 C280 321 298 302 320 302 C342 302 360 321 360 344 C360 367 342 386 320 386 C298 386 280 367 "
     "280 344 Z"},
    {Layer::eye, ink, 0, Level::compact,
     "M320 340 C320 331 328 323 337 323 C346 323 354 331 354 340 C354 349 346 357 337 357 C328 357 320 349 "
     "320 340 Z"},
    {Layer::mouth, white, 0, Level::mid,
     "M212 408 L304 408 C320 408 320 442 304 442 L212 442 C196 442 196 408 212 408 Z"},
    {Layer::mouth, ink, 10, Level::mid,
     "M212 408 L304 408 C320 408 320 442 304 442 L212 442 C196 442 196 408 212 408 Z"},
    {Layer::mouth, ink, 10, Level::rich, "M204 425 L312 425"},
    {Layer::mouth, ink, 8, Level::rich, "M235 410 L235 440 M258 410 L258 440 M281 410 L281 440"},
    {Layer::extra, water, 0, Level::mid,
     "M112 238 C121 265 139 278 139 295 C139 311 127 322 112 322 C97 322 85 311 85 295 C85 278 103 265 112 "
     "238 Z"},
    {Layer::extra, waterShine, 0, Level::rich,
     "M98 294 C98 308 105 315 113 316 C107 309 105 302 105 294 C104 289 98 289 98 294 Z"},
    {Layer::lick, waterShine, 0, Level::rich,
     "M390 150 C390 172 402 184 418 186 C407 176 402 164 402 150 C401 142 391 142 390 150 Z"},
};

constexpr MascotPart confusedParts[] = {
    {Layer::body, flame, 0, Level::tiny,
     "M180 490 C110 490 66 446 67 382 C69 300 132 280 124 207 C121 179 110 157 93 139 C149 141 189 171 201 "
     "225 C204 177 254 153 262 102 C267 68 254 42 232 22 C313 32 359 94 346 155 C341 185 356 209 379 235 "
     "C420 282 453 318 451 382 C450 446 404 490 334 490 C300 490 214 490 180 490 Z"},
    {Layer::shade, seat, 0, Level::rich,
     "M450 366 C456 440 408 490 334 490 C290 490 230 490 196 490 C236 486 290 484 328 480 C396 474 438 432 "
     "450 366 Z"},
    {Layer::lick, flame, 0, Level::tiny,
     "M370 132 C362 70 400 30 444 30 C488 30 512 60 505 96 C499 126 474 134 464 154 C460 162 460 168 460 176 "
     "L428 176 C426 150 436 136 452 122 C466 110 472 100 470 88 C468 74 456 66 442 66 C412 66 388 92 370 132 "
     "Z M444 192 C457 192 466 201 466 213 C466 225 457 234 444 234 C431 234 422 225 422 213 C422 201 431 192 "
     "444 192 Z"},
    {Layer::core, ember, 0, Level::compact,
     "M196 466 C138 466 100 432 101 382 C103 324 163 304 209 259 C245 223 279 191 285 143 C312 177 309 221 "
     "336 253 C370 296 418 326 417 382 C416 432 376 466 318 466 C290 466 226 466 196 466 Z"},
    {Layer::highlight, shine, 0, Level::rich,
     "M285 48 C319 74 336 110 327 153 C325 169 328 183 337 199 C318 185 309 169 310 149 C314 110 307 76 285 "
     "48 Z"},
    {Layer::highlight, shine, 0, Level::rich, "M112 151 C148 159 174 185 188 225 C169 197 144 177 112 151 Z"},
    {Layer::highlight, shine, 0, Level::rich,
     "M278 179 C289 199 290 219 299 235 C305 248 294 257 276 257 C257 257 245 249 252 235 C260 219 272 205 "
     "278 179 Z"},
    {Layer::brow, ink, 0, Level::compact,
     "M233 279 C249 292 270 268 254 254 C225 230 148 236 138 277 C168 253 205 254 233 279 Z"},
    {Layer::brow, ink, 0, Level::compact,
     "M293 329 C273 331 269 300 290 297 C327 293 360 291 394 314 C357 316 330 324 293 329 Z"},
    {Layer::eye, white, 0, Level::compact,
     "M149 334 C151 311 173 292 197 294 C221 297 239 318 237 342 C235 366 213 384 189 382 C165 380 147 358 "
     "149 334 Z"},
    {Layer::eye, ink, 0, Level::compact,
     "M190 325 C191 315 200 308 210 309 C220 309 227 318 226 328 C225 338 217 345 207 344 C197 344 189 335 "
     "190 325 Z"},
    {Layer::eye, white, 0, Level::compact,
     "M287 339 L375 346 C373 372 352 388 327 386 C303 384 285 364 287 339 Z"},
    {Layer::eye, ink, 0, Level::compact,
     "M323 342 L363 345 C361 365 351 377 340 376 C329 375 322 362 323 342 Z"},
    {Layer::eye, ink, 14, Level::compact, "M281 338 L382 347"},
    {Layer::mouth, ink, 14, Level::mid, "M208 424 C225 409 239 413 248 425 C258 440 281 440 298 422"},
};

constexpr MascotPart delightedParts[] = {
    {Layer::body, flame, 0, Level::tiny, baseBody},
    {Layer::shade, seat, 0, Level::rich, baseShade},
    {Layer::lick, flame, 0, Level::tiny,
     "M424 42 Q437 103 498 116 Q437 129 424 190 Q411 129 350 116 Q411 103 424 42 Z M482 172 Q487 193 508 198 "
     "Q487 203 482 224 Q477 203 456 198 Q477 193 482 172 Z"},
    {Layer::core, ember, 0, Level::compact, baseCore},
    {Layer::highlight, shine, 0, Level::rich, crownSliver},
    {Layer::highlight, shine, 0, Level::rich, leftSliver},
    {Layer::highlight, shine, 0, Level::rich, browJet},
    {Layer::brow, ink, 0, Level::compact,
     "M223 282 C238 294 257 270 241 258 C213 236 137 251 134 290 C158 262 194 260 223 282 Z"},
    {Layer::brow, ink, 0, Level::compact,
     "M291 282 C276 294 257 270 273 258 C301 236 377 251 380 290 C356 262 320 260 291 282 Z"},
    {Layer::eye, ink, 19, Level::compact, "M144 356 C160 312 214 312 230 356"},
    {Layer::eye, ink, 19, Level::compact, "M282 356 C298 312 352 312 368 356"},
    {Layer::mouth, ink, 0, Level::compact,
     "M204 396 C236 402 276 402 308 396 C310 434 292 456 256 456 C220 456 202 434 204 396 Z"},
    {Layer::mouth, flame, 0, Level::rich,
     "M224 444 C232 428 246 424 258 424 C270 424 282 430 288 444 C280 452 270 456 256 456 C242 456 232 452 "
     "224 444 Z"},
    {Layer::extra, cheek, 0, Level::rich,
     "M112 390 C112 383 123 377 136 377 C149 377 160 383 160 390 C160 397 149 403 136 403 C123 403 112 397 "
     "112 390 Z"},
    {Layer::extra, cheek, 0, Level::rich,
     "M356 390 C356 383 367 377 380 377 C393 377 404 383 404 390 C404 397 393 403 380 403 C367 403 356 397 "
     "356 390 Z"},
};

constexpr MascotPart winkParts[] = {
    {Layer::body, flame, 0, Level::tiny, baseBody},
    {Layer::shade, seat, 0, Level::rich, baseShade},
    {Layer::lick, flame, 0, Level::tiny,
     "M396 66 C396 51 409 38 424 38 C439 38 452 51 452 66 C452 81 439 94 424 94 C409 94 396 81 396 66 Z M394 "
     "150 C394 126 410 114 428 114 C450 114 462 132 462 154 C462 194 434 222 390 234 C410 212 418 198 416 "
     "184 C402 180 394 166 394 150 Z"},
    {Layer::core, ember, 0, Level::compact, baseCore},
    {Layer::highlight, shine, 0, Level::rich, crownSliver},
    {Layer::highlight, shine, 0, Level::rich, leftSliver},
    {Layer::highlight, shine, 0, Level::rich, browJet},
    {Layer::brow, ink, 0, Level::compact,
     "M224 289 C239 304 262 282 248 267 C222 240 143 240 132 280 C163 257 199 262 224 289 Z"},
    {Layer::brow, ink, 0, Level::compact,
     "M285 329 C266 336 255 306 275 299 C309 287 356 287 382 318 C345 310 320 317 285 329 Z"},
    {Layer::eye, white, 0, Level::compact,
     "M146 328 L234 328 C234 359 215 380 190 380 C165 380 146 359 146 328 Z"},
    {Layer::eye, ink, 0, Level::compact,
     "M177 328 L223 328 C223 352 213 368 200 368 C187 368 177 352 177 328 Z"},
    {Layer::eye, ink, 14, Level::compact, "M139 328 L241 328"},
    {Layer::eye, ink, 18, Level::compact, "M276 352 C302 370 340 368 370 346"},
    {Layer::mouth, ink, 14, Level::mid, "M214 416 C244 436 286 434 314 404"},
    {Layer::mouth, ink, 12, Level::mid, "M304 396 C314 399 322 406 325 416"},
    {Layer::extra, cheek, 0, Level::rich,
     "M116 402 C116 395 127 389 140 389 C153 389 164 395 164 402 C164 409 153 415 140 415 C127 415 116 409 "
     "116 402 Z"},
    {Layer::extra, cheek, 0, Level::rich,
     "M362 402 C362 395 373 389 386 389 C399 389 410 395 410 402 C410 409 399 415 386 415 C373 415 362 409 "
     "362 402 Z"},
};

constexpr MascotPart loveParts[] = {
    {Layer::body, flame, 0, Level::tiny, baseBody},
    {Layer::shade, seat, 0, Level::rich, baseShade},
    {Layer::lick, heart, 0, Level::tiny,
     "M430 189 C399 165 360 136 360 102 C360 53 416 51 430 93 C444 51 500 53 500 102 C500 136 462 165 430 "
     "189 Z"},
    {Layer::core, ember, 0, Level::compact, baseCore},
    {Layer::highlight, shine, 0, Level::rich, crownSliver},
    {Layer::highlight, shine, 0, Level::rich, leftSliver},
    {Layer::highlight, shine, 0, Level::rich, browJet},
    {Layer::brow, ink, 0, Level::compact,
     "M222 289 C239 296 250 271 234 263 C203 249 145 262 136 298 C163 276 191 274 222 289 Z"},
    {Layer::brow, ink, 0, Level::compact,
     "M291 276 C275 285 261 261 277 252 C308 234 374 250 380 288 C355 262 322 258 291 276 Z"},
    {Layer::eye, heart, 0, Level::compact,
     "M192 396 C170 379 142 358 142 334 C142 299 182 297 192 327 C202 297 242 299 242 334 C242 358 215 379 "
     "192 396 Z"},
    {Layer::eye, heart, 0, Level::compact,
     "M322 396 C300 379 272 358 272 334 C272 299 312 297 322 327 C332 297 372 299 372 334 C372 358 345 379 "
     "322 396 Z"},
    {Layer::eye, heartShine, 0, Level::rich,
     "M162 330 C162 326 166 322 172 322 C178 322 182 326 182 330 C182 334 178 338 172 338 C166 338 162 334 "
     "162 330 Z"},
    {Layer::eye, heartShine, 0, Level::rich,
     "M292 330 C292 326 296 322 302 322 C308 322 312 326 312 330 C312 334 308 338 302 338 C296 338 292 334 "
     "292 330 Z"},
    {Layer::mouth, ink, 14, Level::mid, "M222 422 C240 438 274 438 292 418"},
    {Layer::lick, heartShine, 0, Level::rich,
     "M388 98 C388 92 394 87 402 87 C410 87 416 92 416 98 C416 104 410 109 402 109 C394 109 388 104 388 98 "
     "Z"},
    {Layer::extra, cheek, 0, Level::rich,
     "M106 410 C106 403 117 397 130 397 C143 397 154 403 154 410 C154 417 143 423 130 423 C117 423 106 417 "
     "106 410 Z"},
    {Layer::extra, cheek, 0, Level::rich,
     "M364 410 C364 403 375 397 388 397 C401 397 412 403 412 410 C412 417 401 423 388 423 C375 423 364 417 "
     "364 410 Z"},
};

} // namespace

std::span<const MascotPart> seatedParts(FlameExpression expression) {
    switch (expression) {
    case FlameExpression::suspicious:
        return suspiciousParts;
    case FlameExpression::sweating:
        return sweatingParts;
    case FlameExpression::confused:
        return confusedParts;
    case FlameExpression::delighted:
        return delightedParts;
    case FlameExpression::wink:
        return winkParts;
    case FlameExpression::love:
        return loveParts;
    default:
        return smugParts;
    }
}

} // namespace varnet
