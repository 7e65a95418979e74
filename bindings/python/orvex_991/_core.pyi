import numpy as np
from numpy.typing import NDArray

__version__: str

def bgr2gray(src: NDArray[np.uint8]) -> NDArray[np.uint8]: ...
def otsu(src: NDArray[np.uint8], mask: NDArray[np.uint8] | None = None) -> int: ...
