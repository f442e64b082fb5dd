import numpy as np
import pytest

import lmimaging


@pytest.fixture
def random():
    return np.random.default_rng(20)


@pytest.fixture(scope="session")
def all_types():
    return {type.id: type for type in lmimaging.types()}
