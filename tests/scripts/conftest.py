import pytest

from mac import Mac


@pytest.fixture
def mac(tmp_path):
    return Mac(tmp_path)
